#include "recordingdriver.h"

RecordingDriver* RecordingDriver::last = nullptr;

namespace {

canbus::DriverProfile profileOf(int id)
{
    // Borrow the real driver's profile: build it once, read it, let it go.
    QObject scratch;
    const canbus::DriverEntry* entry = canbus::findDriver(id);
    CanbusInterface* real = entry ? entry->create(&scratch) : nullptr;
    auto* common = qobject_cast<CommonDriver*>(real);
    return common ? common->profile()
                  : canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::A};
}

int recordingId = 0;

CanbusInterface* makeRecording(QObject* parent)
{
    return new RecordingDriver(recordingId, parent);
}

} // namespace

RecordingDriver::RecordingDriver(int id, QObject* parent)
    : CommonDriver(id, profileOf(id), parent)
{
    last = this;
}

int RecordingDriver::checkProtocolData(const QByteArray& frame)
{
    frames.append(frame);
    if (onFrame)
        onFrame(frame);
    return 1;
}

RecordingDriverScope::RecordingDriverScope(int id)
    : m_override((recordingId = id, id), &makeRecording)
{
    RecordingDriver::last = nullptr;
}

void RecordingDriver::setSrcState(srctype type, const QList<QVariant>& args)
{
    sources.append({int(type), args});
}

void RecordingDriver::setCurrentTime(int hour, int minute, int second)
{
    times.append(QTime(hour, minute, second));
}
