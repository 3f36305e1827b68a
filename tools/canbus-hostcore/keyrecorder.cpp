#include "keyrecorder.h"

#include "common/kkmapkeys.h"

namespace host {

KeyRecorder::KeyRecorder(KeyHandler onKey, CallHandler onOtherCall)
    : m_onKey(std::move(onKey)), m_onOtherCall(std::move(onOtherCall))
{
}

int KeyRecorder::ioctl(int fd, unsigned long request, unsigned long arg)
{
    const int result = RecordingInputInjector::ioctl(fd, request, arg);
    const QByteArray device = calls().last().path;
    // The drivers' keys and the microcontroller's go to nodes of their own.
    const bool keyDevice = device == keyDevicePath() || device == mcuKeyDevicePath();
    if (keyDevice && request >= unsigned(canbus::kKeyIoctlBase))
        m_onKey(int(request - unsigned(canbus::kKeyIoctlBase)), arg != 0);
    else
        m_onOtherCall(device, request, arg);
    return result;
}

int KeyRecorder::ioctlData(int fd, unsigned long request, void* data, std::size_t size)
{
    const int result = RecordingInputInjector::ioctlData(fd, request, data, size);
    m_onOtherCall(calls().last().path, request, 0);
    return result;
}

int KeyRecorder::close(int fd)
{
    const int result = RecordingInputInjector::close(fd);
    // The record of calls is only needed while an event is under way; a long run
    // would otherwise keep every call it ever saw.
    if (openDescriptors().isEmpty())
        clear();
    return result;
}

} // namespace host
