#ifndef MUTEOBJ_H
#define MUTEOBJ_H

#include <QList>
#include <QObject>
#include <QPair>

// Audio mute, held by requesters: the sound stays off while any requester
// holds a mute of any type, so one caller's unMute() can't undo another's
// mute. A requester that is destroyed lets go of its holds.
class MuteObj : public QObject
{
    Q_OBJECT
public:
    static MuteObj* getInstance();

    // `requester` may be null (an anonymous hold); it is never dereferenced
    // after its destruction.
    static void mute(QObject* requester, int type);
    static void unMute(QObject* requester, int type);

    static bool isMuted();
    static bool isMutedBy(const QObject* requester, int type);
    static int holdCount();
    static void reset();

signals:
    void muteRequested(QObject* requester, int type);
    void unMuteRequested(QObject* requester, int type);
    void mutedChanged(bool muted);

private slots:
    void onRequesterDestroyed(QObject* requester);

private:
    MuteObj();
    void setHolds(const QList<QPair<const QObject*, int>>& holds);

    QList<QPair<const QObject*, int>> m_holds;
};

#endif // MUTEOBJ_H
