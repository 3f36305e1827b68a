#pragma once
// The box's end of the wire: a new pseudo-terminal, whose other end the head unit
// opens as its serial port, or a real serial device. It tells when the head unit
// opens and closes a pseudo-terminal; a real device counts as open all along.

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

class QSerialPort;
class QSocketNotifier;

namespace canbox {

class BoxLink : public QObject
{
    Q_OBJECT
public:
    explicit BoxLink(QObject* parent = nullptr);
    ~BoxLink() override;

    bool openPty(QString* error);
    bool openDevice(const QString& path, int baudRate, QString* error);
    // The path the head unit opens: the pseudo-terminal's slave, or the device.
    QString peerPath() const { return m_peerPath; }
    bool isPeerPresent() const { return m_present; }
    bool write(const QByteArray& bytes);

    // How often a pseudo-terminal is checked for the head unit opening or closing it.
    static constexpr int kWatchMs = 100;

signals:
    void received(QByteArray bytes);
    void peerOpened();
    void peerClosed();
    // A real device failed; the link is gone.
    void failed(QString reason);

private:
    void watchPty();
    void readPty();
    void setPresent(bool present);

    int m_master = -1;
    QSocketNotifier* m_reader = nullptr;
    QSerialPort* m_port = nullptr;
    QTimer m_watch;
    QString m_peerPath;
    bool m_present = false;
};

} // namespace canbox
