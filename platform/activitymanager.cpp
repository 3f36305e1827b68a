#include "activitymanager.h"

namespace tqappframework {

ActivityManager::ActivityManager() = default;

ActivityManager* ActivityManager::getInstance()
{
    // Never destroyed, so that late callers during shutdown don't meet a dead object.
    static auto* instance = new ActivityManager;
    return instance;
}

QString ActivityManager::currentActivity() const
{
    return m_current;
}

void ActivityManager::setCurrentActivity(const QString& name)
{
    if (name == m_current)
        return;
    m_current = name;
    emit currentActivityChanged(name);
}

void ActivityManager::startActivity(const QString& name, int flag)
{
    m_started.append(name);
    m_lastFlag = flag;
    emit activityStarted(name, flag);
    setCurrentActivity(name);
}

void ActivityManager::bringToFront(const QString& name)
{
    emit activityBroughtToFront(name);
    setCurrentActivity(name);
}

QStringList ActivityManager::startedActivities() const
{
    return m_started;
}

int ActivityManager::lastStartFlag() const
{
    return m_lastFlag;
}

void ActivityManager::reset()
{
    m_started.clear();
    m_lastFlag = 0;
    setCurrentActivity(QString());
}

} // namespace tqappframework
