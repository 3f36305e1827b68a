#ifndef INPUTINJECTOR_H
#define INPUTINJECTOR_H

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>

#include <cstddef>

// The one road from the module to the input device nodes. The default makes
// the real system calls; a test or a desktop host installs another (usually a
// RecordingInputInjector) to see the key and touch events without the devices.
class InputInjector
{
public:
    InputInjector() = default;
    InputInjector(const InputInjector&) = delete;
    InputInjector& operator=(const InputInjector&) = delete;
    virtual ~InputInjector();

    virtual int open(const char* path, int flags);
    virtual int ioctl(int fd, unsigned long request, unsigned long arg);
    // An ioctl whose argument points at `size` bytes (a touch point); a
    // recorder can keep the bytes, which an address alone wouldn't tell.
    virtual int ioctlData(int fd, unsigned long request, void* data, std::size_t size);
    virtual int close(int fd);

    // The installed injector, or the default one that makes the real calls.
    static InputInjector* instance();
    // Not owned; nullptr restores the default. The caller keeps `injector`
    // alive until it installs another or nullptr.
    static void install(InputInjector* injector);
};

// Opens `path` read-write, ioctl(fd, code, value), closes. Does nothing if the
// descriptor is below 1: the head unit treats 0 as a failed open too.
void injectDeviceEvent(const char* path, unsigned long code, unsigned long value);

// Device nodes, each overridable by environment for a desktop or a bench.
QByteArray keyDevicePath();      // CANBUS_KEY_DEVICE, else "/dev/tq_virt_kb"
QByteArray mcuKeyDevicePath();   // CANBUS_MCU_KEY_DEVICE, else "/dev/V_KEY_DEV"
QByteArray touchDevicePath();    // CANBUS_TOUCH_DEVICE, else "/dev/V_TOUCH_DEV"

// Records every call instead of touching a device. Opens hand out made-up
// descriptors counting up from 100 unless the path was told to fail. Not
// thread-safe: use it from one thread.
class RecordingInputInjector : public InputInjector
{
public:
    struct Call
    {
        enum Kind { Open, Ioctl, Close };
        Kind kind = Open;
        QByteArray path;          // for an ioctl or close, the path its descriptor was opened on
        int fd = -1;              // for an open, the descriptor it returned
        int flags = 0;            // open only
        unsigned long request = 0;
        unsigned long arg = 0;
        QByteArray data;          // ioctlData only: the bytes the argument pointed at
    };

    RecordingInputInjector() = default;
    ~RecordingInputInjector() override;

    int open(const char* path, int flags) override;
    int ioctl(int fd, unsigned long request, unsigned long arg) override;
    int ioctlData(int fd, unsigned long request, void* data, std::size_t size) override;
    int close(int fd) override;

    // Opens of `path` return -1 while `fail` holds.
    void failOpen(const QByteArray& path, bool fail = true);
    // The descriptor the next successful open returns; later ones count up from it.
    void setNextDescriptor(int fd);

    const QList<Call>& calls() const;
    QList<Call> calls(Call::Kind kind) const;
    // Descriptors opened and not yet closed.
    QList<int> openDescriptors() const;
    // Forgets the calls and the open descriptors; the failing paths stay.
    void clear();

private:
    QList<Call> m_calls;
    QHash<int, QByteArray> m_open;
    QSet<QByteArray> m_failing;
    int m_nextFd = 100;
};

#endif // INPUTINJECTOR_H
