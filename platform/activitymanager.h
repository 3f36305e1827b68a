#ifndef ACTIVITYMANAGER_H
#define ACTIVITYMANAGER_H

#include <QObject>
#include <QString>
#include <QStringList>

namespace tqappframework {

// Which application is in front. On the unit this switches screens; on the
// desktop it records the requests so that a host can show them.
class ActivityManager : public QObject
{
    Q_OBJECT
public:
    static ActivityManager* getInstance();

    QString currentActivity() const;
    void setCurrentActivity(const QString& name);

    // Opens an application; `flag` is passed through as the caller gave it.
    // The started application becomes the current one.
    void startActivity(const QString& name, int flag = 0);
    // Brings an application that is already running back to the front.
    void bringToFront(const QString& name);

    // Every name given to startActivity(), oldest first.
    QStringList startedActivities() const;
    int lastStartFlag() const;
    void reset();

signals:
    void currentActivityChanged(QString name);
    void activityStarted(QString name, int flag);
    void activityBroughtToFront(QString name);

private:
    ActivityManager();

    QString m_current;
    QStringList m_started;
    int m_lastFlag = 0;
};

} // namespace tqappframework

#endif // ACTIVITYMANAGER_H
