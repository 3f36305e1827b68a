#include "tqplatformcontrol.h"

namespace tqplfctrl {

namespace {

quint64 lineKey(int group, int pin)
{
    return (quint64(quint32(group)) << 32) | quint32(pin);
}

} // namespace

TQPlatformControl::TQPlatformControl() = default;

TQPlatformControl* TQPlatformControl::GetInstance()
{
    TQPlatformControl* instance = peekInstance();
    ++instance->m_references;
    emit instance->instanceAcquired(instance->m_references);
    return instance;
}

TQPlatformControl* TQPlatformControl::peekInstance()
{
    // The object stays alive across releases: a host keeps its connections
    // to the signals while callers take and give back references.
    static auto* instance = new TQPlatformControl;
    return instance;
}

void TQPlatformControl::ReleaseInstance()
{
    TQPlatformControl* instance = peekInstance();
    if (instance->m_references == 0)
        return;   // more releases than takes: nothing to give back
    --instance->m_references;
    emit instance->instanceReleased(instance->m_references);
}

int TQPlatformControl::GpioWrite(int group, int pin, int value)
{
    const int level = value ? 1 : 0;
    m_lines.insert(lineKey(group, pin), level);
    ++m_writes;
    emit gpioWritten(group, pin, level);
    return 0;
}

int TQPlatformControl::GpioRead(int group, int pin) const
{
    return m_lines.value(lineKey(group, pin), -1);
}

int TQPlatformControl::references() const
{
    return m_references;
}

int TQPlatformControl::writeCount() const
{
    return m_writes;
}

void TQPlatformControl::reset()
{
    m_lines.clear();
    m_references = 0;
    m_writes = 0;
}

} // namespace tqplfctrl
