#include "infomodule.h"

#include <algorithm>

namespace {
const char kSourceState[] = "source";
}

InfoModule::InfoModule(QObject* parent)
    : Module(parent)
{
    setObjectName(QStringLiteral("info"));
}

InfoModule::~InfoModule() = default;

QSharedPointer<tqappframework::ModuleProperty> InfoModule::getProperty()
{
    return QSharedPointer<tqappframework::ModuleProperty>::create(
        QStringLiteral("info"), QSharedPointer<QVector<QString>>::create());
}

int InfoModule::initial()
{
    return 0;
}

int InfoModule::startup()
{
    return 0;
}

int InfoModule::final()
{
    return 0;
}

QObject* InfoModule::getModuleObj()
{
    return this;
}

QVariant InfoModule::getSysState(const QString& name) const
{
    return m_states.value(name);
}

void InfoModule::setSysState(const QString& name, const QVariant& value)
{
    m_states.insert(name, value);
    emit sysStateChanged(name, value);
}

QStringList InfoModule::sysStateNames() const
{
    QStringList names = m_states.keys();
    std::sort(names.begin(), names.end());
    return names;
}

QString InfoModule::currentSource() const
{
    return getSysState(QString::fromLatin1(kSourceState)).toString();
}

void InfoModule::setCurrentSource(const QString& source)
{
    setSysState(QString::fromLatin1(kSourceState), source);
}
