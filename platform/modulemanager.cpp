#include "modulemanager.h"

#include <QMutexLocker>

#include <algorithm>

namespace tqappframework {

ModuleManager::ModuleManager() = default;

QSharedPointer<ModuleManager> ModuleManager::self()
{
    // Deliberately never destroyed: at process exit the registered modules may
    // live in plug-ins that are already gone, so their destructors must not run
    // from a static destructor.
    static auto* instance = new QSharedPointer<ModuleManager>(new ModuleManager);
    return *instance;
}

QSharedPointer<Module> ModuleManager::getModule(const QString& name) const
{
    QMutexLocker lock(&m_mutex);
    return m_modules.value(name);
}

void ModuleManager::registerModule(const QString& name, QSharedPointer<Module> module)
{
    if (!module) {
        unregisterModule(name);
        return;
    }
    {
        QMutexLocker lock(&m_mutex);
        m_modules.insert(name, module);
    }
    emit moduleRegistered(name);
}

void ModuleManager::unregisterModule(const QString& name)
{
    QSharedPointer<Module> removed;   // released outside the lock: its destructor may call back
    {
        QMutexLocker lock(&m_mutex);
        removed = m_modules.take(name);
    }
    if (removed)
        emit moduleUnregistered(name);
}

void ModuleManager::clear()
{
    QHash<QString, QSharedPointer<Module>> removed;
    {
        QMutexLocker lock(&m_mutex);
        removed.swap(m_modules);
        m_startupReady = false;
    }
    for (auto it = removed.cbegin(); it != removed.cend(); ++it)
        emit moduleUnregistered(it.key());
}

QStringList ModuleManager::moduleNames() const
{
    QStringList names;
    {
        QMutexLocker lock(&m_mutex);
        names = m_modules.keys();
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool ModuleManager::contains(const QString& name) const
{
    QMutexLocker lock(&m_mutex);
    return m_modules.contains(name);
}

void ModuleManager::setAllModuleStartupReady()
{
    {
        QMutexLocker lock(&m_mutex);
        m_startupReady = true;
    }
    emit allModuleStartupReady();
}

bool ModuleManager::isAllModuleStartupReady() const
{
    QMutexLocker lock(&m_mutex);
    return m_startupReady;
}

} // namespace tqappframework
