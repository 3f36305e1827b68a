#pragma once
// A pseudo-terminal pair for tests and benchmarks that play the far end of a serial
// link: the code under test opens slavePath() with QSerialPort, the test reads and
// writes the master.

#include <QByteArray>
#include <QString>

class PtyPair
{
public:
    PtyPair();
    ~PtyPair();
    PtyPair(const PtyPair&) = delete;
    PtyPair& operator=(const PtyPair&) = delete;

    bool isOpen() const { return m_master >= 0; }
    int masterFd() const { return m_master; }
    QString slavePath() const { return m_slavePath; }

    bool write(const QByteArray& bytes);
    // Reads until at least minBytes have arrived or timeoutMs has passed, running the
    // Qt event loop meanwhile so that the side under test can work.
    QByteArray read(int minBytes, int timeoutMs = 2000);
    // Runs the event loop for ms and returns whatever arrived.
    QByteArray drain(int ms = 50);
    // Without the event loop: what has arrived, at once; or the first bytes to arrive
    // within timeoutMs, empty if none came.
    QByteArray readAvailable();
    QByteArray waitForBytes(int timeoutMs);
    // Closes the master: the slave side sees the far end go away.
    void closeMaster();

private:
    int m_master = -1;
    int m_slave = -1;   // kept open so that the pair survives the port closing
    QString m_slavePath;
};
