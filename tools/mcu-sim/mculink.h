#pragma once
// The simulated MCU's end of the wire: the master of a new pseudo-terminal, whose
// slave the head unit opens, or a real serial device at the MCU's 115200 baud.

#include <QByteArray>
#include <QObject>
#include <QString>

class QSerialPort;
class QSocketNotifier;

class McuLink : public QObject
{
    Q_OBJECT
public:
    explicit McuLink(QObject* parent = nullptr);
    ~McuLink() override;

    // A new pseudo-terminal; name() is then the slave the head unit opens.
    bool openPty();
    bool openDevice(const QString& path);
    QString name() const { return m_name; }
    QString errorString() const { return m_error; }

    bool write(const QByteArray& bytes);

signals:
    void received(QByteArray bytes);

private:
    void onMasterReadable();

    int m_master = -1;
    int m_slave = -1;   // held open so that the master survives the head unit closing it
    QSocketNotifier* m_notifier = nullptr;
    QSerialPort* m_port = nullptr;
    QString m_name;
    QString m_error;
};
