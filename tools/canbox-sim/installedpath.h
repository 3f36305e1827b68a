#pragma once
// The tools find their data (the plug-in, the scenarios) in the build tree when they
// run from it, and beside themselves when they are installed from a package.

#include <QString>

namespace canbox {

// `installed`, taken relative to the folder of the running program, if that exists;
// else `built`, the path in the build tree the tool was compiled with.
QString installedOrBuilt(const char* installed, const char* built);

} // namespace canbox
