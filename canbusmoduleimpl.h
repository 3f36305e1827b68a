#pragma once
// The CAN box link (port, reassembly, acknowledgements, production test) and the
// wiring of the module to its host and sibling modules.

#include <QByteArray>
#include <QMutex>
#include <QObject>
#include <QPointer>
#include <QSerialPort>
#include <QVariantList>

class AirData;
class CanObj;
class CanbusModule;
class PortRecovery;

class CanbusModuleImpl : public QObject
{
    Q_OBJECT
public:
    explicit CanbusModuleImpl(CanbusModule* module);
    ~CanbusModuleImpl() override;

    void initSerialPort();
    void entryProductionTestMode(bool on, int id);
    void setReverse(bool on);
    void setShowReverseLine(bool show);
    AirData* getAirData() const;
    QString getVersionData() const;

    // The CAN box's device: CANBUS_BOX_PORT, else the head unit's own port.
    static QString boxPortName();
    QSerialPort* port() const { return serialPort; }

public slots:
    void sendCanbusData(QByteArray data);
    void onSetBaudRate(int rate);
    void onCheckCanbusData(QByteArray data);
    void onReadyRead();

    void onPowerStateChanged(bool on);
    void onMcuConnected();
    void onSystemFirstFrameReady();
    void onModuleReady(QString name);
    void onAllModuleReady();
    void onCallStateChanged(bool active);
    void sendSrcStateToCan(int type, QVariantList args);
    void sendEQStateToCan(int type, int value);
    void sendCanbusState(QString type, QString value);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void checkProductionTestData(const QByteArray& data);
    bool openPort(int rate);

    CanbusModule* module;
    bool firstFrameReady = false;
    bool allModuleReady = false;
    QPointer<CanObj> canObj;   // the process-wide manager; a test may replace it
    QSerialPort* serialPort = nullptr;
    QMutex mutex;
    bool productionTestMode = false;
    int testTimerId = 0;
    QByteArray testRxBuffer;
    QByteArray testPattern;

    // A port that was open and failed is reopened at the same rate.
    int portRate = 0;
    PortRecovery* recovery = nullptr;   // the port's child
};
