#pragma once
// The shared vehicle records as named values, in the order a person reads them, so
// that the host can show what changed from one signal to the next.

#include <QPair>
#include <QString>
#include <QVariant>
#include <QVector>

class AirData;
class CardoorData;
class CarbodyData;
class RadarData;

namespace host {

using Fields = QVector<QPair<QString, QVariant>>;

Fields airFields(const AirData& record);
Fields doorFields(const CardoorData& record);
Fields bodyFields(const CarbodyData& record);
Fields radarFields(const RadarData& record);

// The fields of `now` whose value differs from the same field in `before`.
Fields changedFields(const Fields& before, const Fields& now);
// The fields that hold a value: not the records' marks for "the vehicle has no such
// thing" (255, -1, an empty text or U+00FF).
Fields presentFields(const Fields& fields);

} // namespace host
