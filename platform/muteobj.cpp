#include "muteobj.h"

#include <algorithm>

MuteObj::MuteObj() = default;

MuteObj* MuteObj::getInstance()
{
    static auto* instance = new MuteObj;
    return instance;
}

void MuteObj::mute(QObject* requester, int type)
{
    MuteObj* self = getInstance();
    const QPair<const QObject*, int> hold(requester, type);
    emit self->muteRequested(requester, type);
    if (self->m_holds.contains(hold))
        return;
    if (requester)
        connect(requester, &QObject::destroyed, self, &MuteObj::onRequesterDestroyed,
                Qt::UniqueConnection);
    auto holds = self->m_holds;
    holds.append(hold);
    self->setHolds(holds);
}

void MuteObj::unMute(QObject* requester, int type)
{
    MuteObj* self = getInstance();
    auto holds = self->m_holds;
    holds.removeAll(qMakePair(static_cast<const QObject*>(requester), type));
    // The request is announced before the state it leads to, as in mute().
    emit self->unMuteRequested(requester, type);
    self->setHolds(holds);
}

bool MuteObj::isMuted()
{
    return !getInstance()->m_holds.isEmpty();
}

bool MuteObj::isMutedBy(const QObject* requester, int type)
{
    return getInstance()->m_holds.contains(qMakePair(requester, type));
}

int MuteObj::holdCount()
{
    return getInstance()->m_holds.size();
}

void MuteObj::reset()
{
    getInstance()->setHolds({});
}

void MuteObj::onRequesterDestroyed(QObject* requester)
{
    auto holds = m_holds;
    holds.erase(std::remove_if(holds.begin(), holds.end(),
                               [requester](const QPair<const QObject*, int>& h) { return h.first == requester; }),
                holds.end());
    setHolds(holds);
}

void MuteObj::setHolds(const QList<QPair<const QObject*, int>>& holds)
{
    const bool wasMuted = !m_holds.isEmpty();
    m_holds = holds;
    if (wasMuted != !m_holds.isEmpty())
        emit mutedChanged(!m_holds.isEmpty());
}
