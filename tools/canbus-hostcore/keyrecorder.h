#pragma once
// Stands in for the input device nodes: nothing is opened on the machine, and every
// key the module injects is handed to a callback as a virtual keyboard number with
// its direction, from the drivers' key node and the MCU's alike. Other device calls
// (touches) are reported raw.

#include <QByteArray>

#include <functional>

#include "inputinjector.h"

namespace host {

class KeyRecorder : public RecordingInputInjector
{
public:
    using KeyHandler = std::function<void(int key, bool pressed)>;
    using CallHandler = std::function<void(const QByteArray& device, unsigned long request, unsigned long arg)>;

    KeyRecorder(KeyHandler onKey, CallHandler onOtherCall);

    int ioctl(int fd, unsigned long request, unsigned long arg) override;
    int ioctlData(int fd, unsigned long request, void* data, std::size_t size) override;
    int close(int fd) override;

private:
    KeyHandler m_onKey;
    CallHandler m_onOtherCall;
};

} // namespace host
