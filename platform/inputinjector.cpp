#include "inputinjector.h"

#include <atomic>
#include <algorithm>
#include <iterator>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

std::atomic<InputInjector*> g_installed{nullptr};

QByteArray pathFromEnvironment(const char* variable, const char* fallback)
{
    const QByteArray value = qgetenv(variable);
    return value.isEmpty() ? QByteArray(fallback) : value;
}

} // namespace

InputInjector::~InputInjector() = default;

int InputInjector::open(const char* path, int flags)
{
    return ::open(path, flags);
}

int InputInjector::ioctl(int fd, unsigned long request, unsigned long arg)
{
    return ::ioctl(fd, request, arg);
}

int InputInjector::ioctlData(int fd, unsigned long request, void* data, std::size_t)
{
    return ::ioctl(fd, request, data);
}

int InputInjector::close(int fd)
{
    return ::close(fd);
}

InputInjector* InputInjector::instance()
{
    static InputInjector real;
    InputInjector* installed = g_installed.load();
    return installed ? installed : &real;
}

void InputInjector::install(InputInjector* injector)
{
    g_installed.store(injector);
}

void injectDeviceEvent(const char* path, unsigned long code, unsigned long value)
{
    // One injector for the whole event, even if another is installed meanwhile.
    InputInjector* injector = InputInjector::instance();
    const int fd = injector->open(path, O_RDWR);
    if (fd < 1)
        return;
    injector->ioctl(fd, code, value);
    injector->close(fd);
}

QByteArray keyDevicePath()
{
    return pathFromEnvironment("CANBUS_KEY_DEVICE", "/dev/tq_virt_kb");
}

QByteArray mcuKeyDevicePath()
{
    return pathFromEnvironment("CANBUS_MCU_KEY_DEVICE", "/dev/V_KEY_DEV");
}

QByteArray touchDevicePath()
{
    return pathFromEnvironment("CANBUS_TOUCH_DEVICE", "/dev/V_TOUCH_DEV");
}

RecordingInputInjector::~RecordingInputInjector()
{
    // Never leave the process pointing at a recorder that is gone.
    if (InputInjector::instance() == this)
        InputInjector::install(nullptr);
}

int RecordingInputInjector::open(const char* path, int flags)
{
    Call call;
    call.kind = Call::Open;
    call.path = QByteArray(path);
    call.flags = flags;
    if (!m_failing.contains(call.path)) {
        call.fd = m_nextFd++;
        m_open.insert(call.fd, call.path);
    }
    m_calls.append(call);
    return call.fd;
}

int RecordingInputInjector::ioctl(int fd, unsigned long request, unsigned long arg)
{
    Call call;
    call.kind = Call::Ioctl;
    call.fd = fd;
    call.path = m_open.value(fd);
    call.request = request;
    call.arg = arg;
    m_calls.append(call);
    return m_open.contains(fd) ? 0 : -1;
}

int RecordingInputInjector::ioctlData(int fd, unsigned long request, void* data, std::size_t size)
{
    Call call;
    call.kind = Call::Ioctl;
    call.fd = fd;
    call.path = m_open.value(fd);
    call.request = request;
    call.arg = reinterpret_cast<quintptr>(data);
    if (data && size > 0)
        call.data = QByteArray(static_cast<const char*>(data), int(size));
    m_calls.append(call);
    return m_open.contains(fd) ? 0 : -1;
}

int RecordingInputInjector::close(int fd)
{
    Call call;
    call.kind = Call::Close;
    call.fd = fd;
    call.path = m_open.value(fd);
    m_calls.append(call);
    return m_open.remove(fd) > 0 ? 0 : -1;
}

void RecordingInputInjector::failOpen(const QByteArray& path, bool fail)
{
    if (fail)
        m_failing.insert(path);
    else
        m_failing.remove(path);
}

void RecordingInputInjector::setNextDescriptor(int fd)
{
    m_nextFd = fd;
}

const QList<RecordingInputInjector::Call>& RecordingInputInjector::calls() const
{
    return m_calls;
}

QList<RecordingInputInjector::Call> RecordingInputInjector::calls(Call::Kind kind) const
{
    QList<Call> matching;
    std::copy_if(m_calls.cbegin(), m_calls.cend(), std::back_inserter(matching),
                 [kind](const Call& c) { return c.kind == kind; });
    return matching;
}

QList<int> RecordingInputInjector::openDescriptors() const
{
    QList<int> fds = m_open.keys();
    std::sort(fds.begin(), fds.end());
    return fds;
}

void RecordingInputInjector::clear()
{
    m_calls.clear();
    m_open.clear();
}
