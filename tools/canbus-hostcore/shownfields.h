#pragma once
// What the host shows of a record: the fields the record's own description marks as
// shown, and of those, what changed from one signal to the next.

#include "recordfields.h"

namespace host {

using Fields = canbus::RecordFields;

// The fields of `now` whose value differs from the same field in `before`.
Fields changedFields(const Fields& before, const Fields& now);
// The fields that hold a value: not the records' marks for "the vehicle has no such
// thing" (255, -1, an empty text or U+00FF).
Fields presentFields(const Fields& fields);

} // namespace host
