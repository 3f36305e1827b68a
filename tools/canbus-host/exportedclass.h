#pragma once
// A class that a plug-in exports for its siblings to link (the MCU link is one), found
// by its name in a library that is already loaded. A host that holds none of the
// module's code meets such a class the way it meets the facade: through its
// meta-object, whose symbol every Qt class with Q_OBJECT exports.

class QLibrary;
struct QMetaObject;

namespace host {

// The meta-object of the exported class `className` (no namespace) in `library`,
// or null when the library has no such class.
const QMetaObject* exportedMetaObject(QLibrary& library, const char* className);

} // namespace host
