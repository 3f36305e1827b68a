#pragma once
// The link to the head unit's microcontroller: its keys, touches, ignition and night
// mode come in; fixed command frames, a heartbeat and firmware updates go out.
//
// A sibling module creates the object, calls startOnFirstFrameReady() once the first
// frame of the system is on screen and connects the signals. Everything runs on the
// thread that created it. The constructor and the calls a host makes are invokable,
// so that a host holding only the plug-in file can create and drive the link through
// the class's meta-object.

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

class QSerialPort;
class LongPressKey;
class QTimer;

class SerialPortObj : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit SerialPortObj(QObject* parent = nullptr);
    ~SerialPortObj() override;

    // The MCU's device: CANBUS_MCU_PORT, else the head unit's own port.
    static QString mcuPortName();

    Q_INVOKABLE void startOnFirstFrameReady();

    // Sends the fixed frame of a command type (a few types take a parameter);
    // types and parameters without a frame send nothing.
    void sendDataToSerialPort(int type, int param);
    void sendDataToSerialPortByTimes(const QByteArray& frame, int times, int intervalMs);
    // One byte: 0xFF accepted, 0xF0 refused.
    void sendAckNack(bool ok);
    // Checksum of a 0xFF 0x55 frame: its last byte becomes the low byte of the sum of
    // bytes 2 up to the one before it. Frames of fewer than 3 bytes are left alone.
    static void setChecksum(QByteArray& frame);
    Q_INVOKABLE QString getMcuVersion() const;

    // `key` is a virtual-keyboard number (canbus::kkmapKey), pressed 1 down, 0 up.
    void sendKeyToQt(int key, int pressed);
    bool checkKeyLongPressed(bool pressed, int key, int longKey);

    // Bytes as they came from the MCU, cut anywhere: what onReadyRead() reads goes
    // here, and so can bytes from anywhere else (a replay, a fuzzer).
    void receive(const QByteArray& bytes);

    // Feeds a firmware file to the MCU, which asks for it packet by packet.
    Q_INVOKABLE void startMcuUpdate(const QString& path);

    // The frame of a command type as sendDataToSerialPort writes it, empty when there
    // is none.
    static QByteArray commandFrame(int type, int param);

signals:
    void accStateChanged(bool on);
    void setNightModeSig(bool night);
    void progressChanged(int percent);
    void updateFinished(int result);
    void updateMessage(int kind, QString text);

public slots:
    void onReadyRead();
    void onKeyLongPressed();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void parseBuffer();
    bool takeStart2EFrame();
    bool takeFF55Frame();
    bool checkData1(const QByteArray& frame);
    bool checkData2(const QByteArray& frame);

    void onKeyFrame(int number, int state);
    void onTouchFrame(const QByteArray& frame);
    bool onFixedRequest(const QByteArray& frame);
    void onVersionFrame(const QByteArray& frame);
    void onUpdateFrame(const QByteArray& frame);
    void sendUpdateSize();
    void sendUpdatePacket(const QByteArray& request);
    void finishUpdate();
    void emitUpdateProgress(int step);

    bool writeFrame(const QByteArray& frame);

    QSerialPort* port;
    QByteArray rxBuffer;
    int lastKey = 0;
    LongPressKey* longPress;   // armed once the port is open
    int touchFd = -1;
    int heartbeatTimerId = 0;
    bool ledState = false;
    int blinkTimerId = 0;
    int lastSelect = -1;
    QString mcuVersion;
    double updateProgress = 0.0;
    QList<QByteArray> updatePackets;
};
