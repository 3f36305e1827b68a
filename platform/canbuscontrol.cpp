#include "canbuscontrol.h"

#include <algorithm>

CanbusControl::CanbusControl() = default;

CanbusControl* CanbusControl::getInstance()
{
    static auto* instance = new CanbusControl;
    return instance;
}

void CanbusControl::setOtherProperty(const QString& name, const QVariant& value)
{
    CanbusControl* self = getInstance();
    self->m_properties.insert(name, value);
    emit self->otherPropertyChanged(name, value);
}

QVariant CanbusControl::otherProperty(const QString& name)
{
    return getInstance()->m_properties.value(name);
}

QStringList CanbusControl::otherPropertyNames()
{
    QStringList names = getInstance()->m_properties.keys();
    std::sort(names.begin(), names.end());
    return names;
}

void CanbusControl::reset()
{
    getInstance()->m_properties.clear();
}
