#pragma once
// One button with two meanings. A press starts a hold timer: released before the
// timer runs out, the button gives its short key (down and up); held past it, its long
// key at that moment, and the release that follows gives nothing. The CAN box drivers
// and the microcontroller link share this; each sends the keys to its own device.

#include <QObject>
#include <functional>

class QTimer;

class LongPressKey : public QObject
{
    Q_OBJECT
public:
    using KeySender = std::function<void(int key, int pressed)>;
    static constexpr int kHoldMs = 1000;

    LongPressKey(KeySender send, QObject* parent);

    // Creates the hold timer. Until then a press is only remembered and its release
    // always counts as short (a link whose port failed to open never arms it).
    void armTimer();
    bool isArmed() const { return m_timer != nullptr; }

    // A second press while one is being timed replaces it: the first gives no key.
    // A release with no press pending returns false and sends nothing.
    bool check(bool pressed, int key, int longKey);

public slots:
    // The hold time is up: the long key, if there is one; the press is then spent.
    void onHoldTimeout();

private:
    KeySender m_send;
    QTimer* m_timer = nullptr;
    int m_shortKey = 0;
    int m_longKey = 0;
};
