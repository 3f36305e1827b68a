#include "shownfields.h"

namespace host {

Fields changedFields(const Fields& before, const Fields& now)
{
    Fields changed;
    for (int i = 0; i < now.size(); ++i) {
        if (i >= before.size() || before.at(i) != now.at(i))
            changed.append(now.at(i));
    }
    return changed;
}

Fields presentFields(const Fields& fields)
{
    static const QString noText(QChar(0xFF));
    Fields present;
    for (const auto& field : fields) {
        const QVariant& v = field.second;
        const bool absent = v.userType() == QMetaType::QString
            ? (v.toString().isEmpty() || v.toString() == noText)
            : (v.toLongLong() == 255 || v.toLongLong() == -1);
        if (!absent)
            present.append(field);
    }
    return present;
}

} // namespace host
