#include "common/longpresskey.h"

#include <QTimer>

LongPressKey::LongPressKey(KeySender send, QObject* parent)
    : QObject(parent), m_send(std::move(send))
{
}

void LongPressKey::armTimer()
{
    if (m_timer)
        return;
    m_timer = new QTimer(this);
    m_timer->setInterval(kHoldMs);
    m_timer->setSingleShot(true);
    connect(m_timer, &QTimer::timeout, this, &LongPressKey::onHoldTimeout);
}

bool LongPressKey::check(bool pressed, int key, int longKey)
{
    if (m_timer && m_timer->isActive())
        m_timer->stop();
    if (pressed) {
        m_shortKey = key;
        m_longKey = longKey;
        if (m_timer)
            m_timer->start();
        return true;
    }
    if (m_shortKey < 1)
        return false;
    m_send(m_shortKey, 1);
    m_send(m_shortKey, 0);
    m_shortKey = 0;
    m_longKey = 0;
    return true;
}

void LongPressKey::onHoldTimeout()
{
    if (m_longKey != 0) {
        m_send(m_longKey, 1);
        m_send(m_longKey, 0);
    }
    m_shortKey = 0;
    m_longKey = 0;
}
