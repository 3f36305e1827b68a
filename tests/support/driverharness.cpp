#include "driverharness.h"

#include "datasavecontrol.h"
#include "platform.h"

DriverHarness::DriverHarness(int id, bool sendConnect)
{
    resetPlatformForTests();
    delete CanObj::instance();
    m_sent.reset(new QSignalSpy(CanObj::instance(), &CanObj::sendDataToCan));
    qputenv("CANBUS_DATA_DIR", m_dataDir.path().toLocal8Bit());
    DataSaveControl::reload();
    InputInjector::install(&m_injector);
    CanObj::instance()->setId(id, sendConnect);
}

DriverHarness::~DriverHarness()
{
    delete CanObj::instance();
    InputInjector::install(nullptr);
}

int DriverHarness::feed(const QByteArray& bytes)
{
    int frameLength = 0;
    QByteArray reply;
    const int r = CanObj::getCanDataChecksum(bytes, frameLength, reply);
    if (!reply.isEmpty())
        replies.append(reply);
    if (r == 0)
        CanObj::instance()->setData(bytes);
    return r;
}

QList<QByteArray> DriverHarness::sentFrames() const
{
    QList<QByteArray> frames;
    for (const QList<QVariant>& args : *m_sent)
        frames.append(args.at(0).toByteArray());
    return frames;
}

QList<QPair<int, int>> DriverHarness::keys() const
{
    QList<QPair<int, int>> result;
    for (const auto& call : m_injector.calls(RecordingInputInjector::Call::Ioctl))
        result.append({int(call.request) - 768, int(call.arg)});
    return result;
}

QList<int> DriverHarness::keyEvents() const
{
    QList<int> out;
    for (const auto& key : keys())
        out << key.first << key.second;
    return out;
}

void DriverHarness::watchActivity()
{
    m_driverSignals.clear();
    const QMetaObject* meta = driver()->metaObject();
    for (int i = QObject::staticMetaObject.methodCount(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() == QMetaMethod::Signal)
            m_driverSignals.push_back(std::make_unique<QSignalSpy>(driver(), QByteArray("2" + method.methodSignature()).constData()));
    }
    m_keysBefore = keys().size();
    m_sentBefore = sentFrames().size();
}

int DriverHarness::activity() const
{
    int n = keys().size() - m_keysBefore + sentFrames().size() - m_sentBefore;
    for (const auto& spy : m_driverSignals)
        n += spy->count();
    return n;
}
