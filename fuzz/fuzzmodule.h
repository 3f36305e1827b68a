#pragma once
// The module as its host starts it, on a box port that cannot open: the receive path
// and the command road work end to end, frames towards the box go nowhere, and keys
// reach a recorder instead of a device. One object serves a whole fuzzing run (its
// start-up is the costly part); every case selects a fresh driver on a clean receive
// buffer, so that each case runs alone and a captured input replays the same way.
//
// Header only, so that the regression suite builds it with the ordinary compiler.

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QTemporaryDir>
#include <QTimerEvent>

#include <memory>

#include "canbusmodule.h"
#include "canbusmoduleimpl.h"
#include "canobj.h"
#include "datasavecontrol.h"
#include "driverfactory.h"
#include "framefamily.h"
#include "inputinjector.h"
#include "languagemanager.h"
#include "platform.h"

namespace canbusfuzz {

class FuzzModule
{
public:
    FuzzModule()
    {
        resetPlatformForTests();
        delete CanObj::instance();
        qputenv("CANBUS_DATA_DIR", m_dataDir.path().toLocal8Bit());
        qputenv("CANBUS_BOX_PORT", "/nonexistent/canbox");
        DataSaveControl::reload();
        DataSaveControl::saveUserData(QStringLiteral("CanIndex"), 0);
        InputInjector::install(&m_keys);
        m_facade->initial();
        m_facade->implementation()->onAllModuleReady();
        // The port can't open anyway; trying again for every case would only cost time.
        QObject::disconnect(CanObj::instance(), &CanObj::setBaudRateSig,
                            m_facade->implementation(), nullptr);
        QObject::connect(CanObj::instance(), &CanObj::sendDataToCan, m_facade.get(),
                         [this](const QByteArray& frame) { m_sent.append(frame); });
    }
    ~FuzzModule()
    {
        // The link refers to the manager to the end, so it goes first.
        m_facade.reset();
        delete CanObj::instance();
        InputInjector::install(nullptr);
    }
    FuzzModule(const FuzzModule&) = delete;
    FuzzModule& operator=(const FuzzModule&) = delete;

    static int driverCount()
    {
        int count = 0;
        canbus::driverEntries(&count);
        return count;
    }
    static const canbus::DriverEntry& entry(quint8 index)
    {
        int count = 0;
        const canbus::DriverEntry* entries = canbus::driverEntries(&count);
        return entries[index % count];
    }

    // A new driver for table entry `index` (modulo the table's size), started as the
    // host starts one: selected, ready, greeted; power on, language "en", an empty
    // receive buffer, nothing recorded but the greeting.
    const canbus::DriverEntry& select(quint8 index)
    {
        const canbus::DriverEntry& e = entry(index);
        CanObj* manager = CanObj::instance();
        manager->setId(0, false);
        LanguageManager::getInstance()->setLanguage(QStringLiteral("en"));
        forget();   // the old driver's goodbye; the new one's greeting is checked too
        m_family = e.family;
        manager->setId(e.id, false);
        manager->setPowerOnState();
        manager->setReady();
        manager->sendConnectData();
        manager->getCurrentCanBusData().recvBuffer.clear();
        return e;
    }

    // One read from the box, as the port or the mcu module delivers it.
    void feed(const QByteArray& bytes) { m_facade->implementation()->onCheckCanbusData(bytes); }

    // One turn of the event loop: what the case posted runs, what it deleted later goes,
    // so that memory stays flat over millions of cases.
    void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // Fires every timer that the manager, the driver and the driver's children have
    // running, once, as if its time had come: delayed sends, releases, long presses,
    // the connect retry, a driver's own timers. A case can't wait for them.
    void fireTimers()
    {
        QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance();
        if (!dispatcher)
            return;
        QList<QPointer<QObject>> owners{CanObj::instance()};
        if (QObject* d = driver()) {
            owners.append(d);
            for (QObject* child : d->findChildren<QObject*>())
                owners.append(child);
        }
        for (const QPointer<QObject>& owner : owners) {
            if (!owner)
                continue;   // gone with an earlier timer's work
            for (const QAbstractEventDispatcher::TimerInfo& timer : dispatcher->registeredTimers(owner)) {
                if (!owner)
                    break;
                QTimerEvent event(timer.timerId);
                QCoreApplication::sendEvent(owner, &event);
            }
        }
    }

    // Forgets the keys and frames recorded so far.
    void forget()
    {
        m_keys.clear();
        m_sent.clear();
    }

    // The first frame sent towards the box that its own family would refuse, or an
    // empty array. Families whose length byte fixes the frame's extent only: in the FD
    // families a frame shorter than its length byte is sometimes sent on purpose. Some
    // boxes' firmware also takes a length byte that disagrees with the frame (a text
    // frame's length taken from another text): such a frame still starts right and
    // carries the checksum of the bytes it has. And one 0x2E box opens its telephone
    // page with a frame of the FD form that carries this family's checksum.
    QByteArray malformedSentFrame() const
    {
        const canbus::FrameFamily family = m_family;
        if (family != canbus::FrameFamily::Start2E && family != canbus::FrameFamily::StartAA55
            && family != canbus::FrameFamily::Start5AA5)
            return QByteArray();
        const QByteArray start = canbus::buildFrame(family, 0, QByteArray())
                                     .left(family == canbus::FrameFamily::Start2E ? 1 : 2);
        for (const QByteArray& frame : m_sent) {
            int length = 0;
            QByteArray reply;
            if (canbus::checkFrame(family, frame, length, reply) == canbus::FrameOk && length == frame.size())
                continue;
            QByteArray resummed = frame;
            canbus::writeChecksum(family, resummed);
            const bool fdPage = family == canbus::FrameFamily::Start2E && frame.startsWith(char(0xFD));
            if (frame.size() < start.size() + 3 || !(frame.startsWith(start) || fdPage) || resummed != frame)
                return frame;
        }
        return QByteArray();
    }

    QString dataDir() const { return m_dataDir.path(); }
    CanbusModule& facade() { return *m_facade; }
    CanbusInterface* driver() const { return CanObj::instance()->currentDriver(); }
    const QList<QByteArray>& sentFrames() const { return m_sent; }
    RecordingInputInjector& keys() { return m_keys; }

private:
    // Every driver selection saves a setting; in memory that costs no disk flush.
    static QString dataDirTemplate()
    {
        const QFileInfo shm(QStringLiteral("/dev/shm"));
        const QString dir = shm.isDir() && shm.isWritable() ? shm.filePath() : QDir::tempPath();
        return dir + QStringLiteral("/canbus-fuzz-XXXXXX");
    }

    QTemporaryDir m_dataDir{dataDirTemplate()};
    RecordingInputInjector m_keys;
    std::unique_ptr<CanbusModule> m_facade{new CanbusModule};
    QList<QByteArray> m_sent;
    canbus::FrameFamily m_family = canbus::FrameFamily::Start2E;
};

} // namespace canbusfuzz
