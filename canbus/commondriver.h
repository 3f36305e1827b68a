#pragma once
// What nearly all drivers do alike, driven by their DriverProfile: the family's
// check, walk, checksum and acknowledgements, the connect and disconnect forms, the
// power and ready flags, the radar display and the common slots; and, for the frame
// handlers, the record updates, the outdoor temperature and the key road.
//
// Free helpers that need no driver sit beside this class: temperature.h (set-point
// scale, left/right order, outdoor text), keytable.h, language.h, sourcestate.h.

#include "canbusinterface.h"
#include "driverprofile.h"
#include "common/keytable.h"
#include "framereader.h"

class QTimer;

class CommonDriver : public CanbusInterface
{
    Q_OBJECT
public:
    CommonDriver(int driverId, const canbus::DriverProfile& profile, QObject* parent = nullptr);

    const canbus::DriverProfile& profile() const { return m_profile; }
    // Frames the walk has handed to the parser since the driver was made: what a host
    // or a benchmark compares with the frames a box sent, to see what a link lost.
    quint64 framesParsed() const { return m_framesParsed; }

    int checkCanDataChecksum(const QByteArray& data, int& frameLength, QByteArray& reply) override;
    int setCanbusData(const QByteArray& data) override;
    void autoCalculateChecksum(QByteArray& frame) const override;
    void createAckData(QByteArray& out, unsigned char value) const override;
    void createNackData(QByteArray& out, unsigned char value) const override;

    void setReady(bool value) override;
    void setPowerOnState() override;
    void setPowerOffState() override;
    bool needSendConnect(int& intervalMs, QByteArray& frame) override;
    bool needSendDisconnect(QByteArray& frame) override;

    // Decides whether the radar overlay is up from the eight sensors.
    virtual void RadarDisplay();
    // The overlay is up while any sensor shows something: on a scale of bars a count
    // above 0 (0 is clear), on a distance scale a reading below 11 (large is clear, 255
    // no reading). Drivers differ in how they tell the scale.
    void setRadarOnByScale(bool barScale);
    // The four sensors of one end of the car, left to right, from frame bytes `first`
    // on (through `bars` where the box counts otherwise), on a display of `levels`
    // bars; then the overlay decision and radarDataChanged.
    using RadarBars = quint8 (*)(quint8 raw);
    void showRadarEnd(bool front, quint8 levels, const FrameReader& f, int first, RadarBars bars = nullptr);

    // A frame of the driver's family, checksum included.
    QByteArray makeFrame(quint8 type, std::initializer_list<quint8> data) const;
    QByteArray makeFrame(quint8 type, const QByteArray& data) const;
    void sendFrame(quint8 type, std::initializer_list<quint8> data);
    void sendFrame(quint8 type, const QByteArray& data);

public slots:
    virtual void btCallStatesChangeSlot(bool active);
    virtual void CallSelectSlot();
    virtual void exitSelectSlot();
    virtual void setTcanBussend(int a, int b, int c, int d, int e);

protected:
    // The climate controls a vehicle has, shown from the start: each listed control and
    // the right fan go from "no such control" to 0, and both set-point zones show.
    template <std::size_t N>
    void showClimateControls(quint8 AirData::*const (&controls)[N])
    {
        for (quint8 AirData::*control : controls)
            airData->*control = 0;
        airData->airWindSpeedRight = 0;
        airData->tempLeftVisible = 1;
        airData->tempRightVisible = 1;
    }

    // The repeating timer that calls exitSelectSlot for the driver's life, through which
    // most drivers keep telling the box the vehicle model. Made once, however often the
    // driver starts again.
    void startExitSelectTimer(int intervalMs);
    QTimer* exitSelectTimer = nullptr;

    // One-shot timer whose end tells the panel about a climate that is still off; a
    // running one starts again.
    void startAirOffTimer(int ms);
    void timerEvent(QTimerEvent* event) override;

    // A frame handler decodes into a fresh record and hands it over here; the live
    // record is replaced, and the change signal sent when `notify`, only if they
    // differ. Each returns whether it replaced the record, so that a driver whose
    // vehicle signals otherwise can do so itself.
    //
    // The climate record takes every field of `fresh` (the outdoor temperature and the
    // tyre page too, which a climate frame usually leaves at their defaults) but the
    // two per-driver switches airValid and airShowFlag. The driver's id is set first.
    bool updateAirData(AirData fresh, bool notify = true);
    bool updateCardoorData(const CardoorData& fresh, bool notify = true);
    bool updateCarbodyData(const CarbodyData& fresh, bool notify = true);

    // The outdoor temperature, unit 0 Celsius or 1 Fahrenheit. The text half stores
    // unit, validity and text in the climate record and sends outdoorTemperatureChanged
    // when text or validity changed; the body half stores unit and tenths in the body
    // record and sends carbodyDataChanged when either changed. Each returns whether it
    // signalled.
    bool updateOutdoorText(double value, int unit, bool valid);
    bool updateOutdoorBody(double value, int unit);
    void updateOutdoorTemperature(double value, int unit, bool valid = true);
    // The boxes that show whole degrees Celsius with one decimal ("21.0℃") and "--" for no
    // reading: the climate record takes the text, valid either way, and a reading is
    // signalled at every frame (no reading is not). Returns the text.
    QString showOutdoorCelsius(bool known, int degrees);

    // A frame of the driver's own record: decoded by `handle` when it is longer than
    // `above` bytes, then dataChanged; a shorter one changes nothing and still counts as
    // handled (the parser's 1).
    template <typename Driver>
    int recordFrame(const FrameReader& f, int above, void (Driver::*handle)(const FrameReader&))
    {
        if (f.size() > above) {
            (static_cast<Driver*>(this)->*handle)(f);
            emit dataChanged();
        }
        return 1;
    }

    // Sends a head-unit key code down (1) or up (0) on the virtual keyboard.
    void sendKeyCode(int code, int pressed, canbus::ZeroKey zero = canbus::ZeroKey::Skip);

    // The common key frame: a nonzero vehicle key number is kept in lastKeyValue and
    // presses the key `codeOf` gives for it; 0 releases the kept key, so that the
    // release reaches the key that went down. `codeOf` is the driver's table look-up,
    // e.g. [this](int v) { return getQtKeyFromValue(v); }.
    template <typename CodeOf>
    void vehicleKey(int value, CodeOf&& codeOf, canbus::ZeroKey zero = canbus::ZeroKey::Skip)
    {
        if (value != 0)
            lastKeyValue = value;
        sendKeyCode(codeOf(lastKeyValue), value != 0 ? 1 : 0, zero);
    }

    bool btCallActive = false;
    int callSelectCount = 0;
    int lastKeyValue = 0;   // last nonzero vehicle key number

private:
    canbus::DriverProfile m_profile;
    quint64 m_framesParsed = 0;
    int m_airOffTimerId = 0;
};
