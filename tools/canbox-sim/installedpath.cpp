#include "installedpath.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace canbox {

QString installedOrBuilt(const char* installed, const char* built)
{
    const QString there = QDir(QCoreApplication::applicationDirPath()).filePath(QString::fromUtf8(installed));
    return QFileInfo::exists(there) ? QDir::cleanPath(there) : QString::fromUtf8(built);
}

} // namespace canbox
