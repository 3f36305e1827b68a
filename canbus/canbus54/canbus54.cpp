#include "canbus54.h"

#include <QCoreApplication>
#include <QVariant>
#include <cstddef>

#include "framereader.h"

namespace {

constexpr auto kProfile = canbus::DriverProfile{canbus::FrameFamily::Start2E, canbus::WalkVariant::C}
        .requesting(0x30, 0x00);

constexpr quint8 kKeyFrame = 0x20;
constexpr int kKeyFrameMinimum = 6;

// The telephone button: answer on a tap, hang up when held.
constexpr int kPhoneButton = 0x1300059;
constexpr int kAnswerKey = 0x1300058;
constexpr int kHangUpKey = 0x1300059;

// The mode button, and what it becomes where it has nothing to act on.
constexpr int kModeButton = 0x1200027;
constexpr int kSourceSwitchKey = 0x1100041;

// Sources that take the mode button themselves while they play...
constexpr const char* kModeSources[] = {"usb", "card", "radio", "btMusicMode", "avin"};
// ...and phone projections that take it in front of any source.
constexpr const char* kProjections[] = {
    "carplay", "hicar", "AndroidAuto", "carlife", "iosmirror", "autolink", "airplay",
};

template <std::size_t N>
bool listed(const char* const (&names)[N], const QString& name)
{
    for (const char* n : names) {
        if (name == QLatin1String(n))
            return true;
    }
    return false;
}

QString appProperty(const char* name)
{
    const QCoreApplication* app = QCoreApplication::instance();
    return app ? app->property(name).toString() : QString();
}

} // namespace

Canbus54Obj::Canbus54Obj(QObject* parent)
    : Canbus32Obj(54, kProfile, parent)
{
}

Canbus54Obj::~Canbus54Obj() = default;

int Canbus54Obj::modeButtonKey() const
{
    const QString activity = appProperty("activity");
    const QString resource = appProperty("resource");
    const bool sourcePlaying = !activity.isEmpty() && activity == resource && listed(kModeSources, activity);
    return (sourcePlaying || listed(kProjections, activity)) ? kModeButton : kSourceSwitchKey;
}

int Canbus54Obj::checkProtocolData(const QByteArray& frame)
{
    const FrameReader f(frame);
    if (f.at(1) != kKeyFrame || f.size() < kKeyFrameMinimum)
        return Canbus32Obj::checkProtocolData(frame);
    const quint8 value = f.d(0);
    const quint8 state = f.d(1);
    if (value != 0)
        currentKey = getQtKeyFromValue(value);
    if (currentKey == kPhoneButton) {
        if (state == 1)
            checkKeyLongPressed(true, toKkmapKey(kAnswerKey), toKkmapKey(kHangUpKey));
        else if (state == 0)
            checkKeyLongPressed(false, 0, 0);
        return 1;
    }
    if (currentKey == kModeButton) {
        if (state <= 1)
            sendKeyToQt(toKkmapKey(modeButtonKey()), state);
        return 1;
    }
    return Canbus32Obj::checkProtocolData(frame);
}
