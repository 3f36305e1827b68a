#include "module.h"

namespace tqappframework {

ModuleProperty::ModuleProperty(const QString& name, QSharedPointer<QVector<QString>> dependencies)
    : m_name(name)
    , m_dependencies(std::move(dependencies))
{
}

QString ModuleProperty::name() const
{
    return m_name;
}

QSharedPointer<QVector<QString>> ModuleProperty::dependencies() const
{
    return m_dependencies;
}

Module::Module(QObject* parent)
    : QObject(parent)
{
}

Module::~Module() = default;

PeerModule::PeerModule(const QString& name, QObject* object, QObject* parent)
    : Module(parent)
    , m_name(name)
    , m_object(object)
{
    setObjectName(name);
    // The wrapped object usually belongs to the host; never hand out a
    // pointer to it once it is gone.
    if (object)
        connect(object, &QObject::destroyed, this, [this] { m_object = nullptr; });
}

PeerModule::~PeerModule() = default;

QSharedPointer<ModuleProperty> PeerModule::getProperty()
{
    return QSharedPointer<ModuleProperty>::create(m_name, QSharedPointer<QVector<QString>>::create());
}

int PeerModule::initial()
{
    return 0;
}

int PeerModule::startup()
{
    return 0;
}

int PeerModule::final()
{
    return 0;
}

QObject* PeerModule::getModuleObj()
{
    return m_object;
}

QString PeerModule::name() const
{
    return m_name;
}

} // namespace tqappframework
