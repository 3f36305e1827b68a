#include "datasavecontrol.h"

#include <QCoreApplication>
#include <QDir>
#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <QScopedPointer>
#include <QSettings>
#include <QStandardPaths>

namespace {

const char kUser[] = "user";
const char kFactory[] = "factory";
const char kSetting[] = "setting";
const char kTemp[] = "temp";

struct Store
{
    QMutex mutex;
    QScopedPointer<QSettings> settings;   // null until first use and after reload()
    QString path;
    QHash<QString, QVariant> temp;

    // Caller holds the mutex.
    QSettings& open()
    {
        if (!settings) {
            QString dir = qEnvironmentVariable("CANBUS_DATA_DIR");
            if (dir.isEmpty())
                dir = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                      + QStringLiteral("/canbus");
            QDir().mkpath(dir);
            path = QDir(dir).absoluteFilePath(QStringLiteral("canbus.ini"));
            settings.reset(new QSettings(path, QSettings::IniFormat));
            settings->setIniCodec("UTF-8");
        }
        return *settings;
    }
};

Store& store()
{
    // Never destroyed: saves may still come from objects torn down at exit.
    static auto* s = new Store;
    return *s;
}

QString settingGroup(const QString& group)
{
    return group.isEmpty() ? QString::fromLatin1(kSetting)
                           : QString::fromLatin1(kSetting) + QLatin1Char('/') + group;
}

QVariant readPersistent(const QString& group, const QString& key, const QVariant& def)
{
    if (key.isEmpty())
        return def;
    Store& s = store();
    QMutexLocker lock(&s.mutex);
    return s.open().value(group + QLatin1Char('/') + key, def);
}

bool savePersistent(const QString& group, const QString& key, const QVariant& value)
{
    if (key.isEmpty())
        return false;
    Store& s = store();
    QMutexLocker lock(&s.mutex);
    QSettings& settings = s.open();
    const QString path = group + QLatin1Char('/') + key;
    // Vehicles repeat the states they report; a value already stored costs no write.
    if (settings.contains(path) && settings.value(path) == value)
        return settings.status() == QSettings::NoError;
    settings.setValue(path, value);
    settings.sync();
    return settings.status() == QSettings::NoError;
}

} // namespace

DataSaveControl::DataSaveControl() = default;

DataSaveControl* DataSaveControl::notifier()
{
    static DataSaveControl* instance = [] {
        auto* n = new DataSaveControl;
        // Whoever saves first may be a short-lived thread; the notifier belongs
        // with the application's main thread.
        if (QCoreApplication* app = QCoreApplication::instance())
            n->moveToThread(app->thread());
        return n;
    }();
    return instance;
}

QVariant DataSaveControl::readUserData(const QString& key, const QVariant& def)
{
    return readPersistent(QString::fromLatin1(kUser), key, def);
}

bool DataSaveControl::saveUserData(const QString& key, const QVariant& value)
{
    const bool ok = savePersistent(QString::fromLatin1(kUser), key, value);
    if (ok)
        emit notifier()->dataSaved(QString::fromLatin1(kUser), key, value);
    return ok;
}

QVariant DataSaveControl::readFactoryData(const QString& key, const QVariant& def)
{
    return readPersistent(QString::fromLatin1(kFactory), key, def);
}

bool DataSaveControl::saveFactoryData(const QString& key, const QVariant& value)
{
    const bool ok = savePersistent(QString::fromLatin1(kFactory), key, value);
    if (ok)
        emit notifier()->dataSaved(QString::fromLatin1(kFactory), key, value);
    return ok;
}

QVariant DataSaveControl::readSettingData(const QString& key, const QVariant& def, const QString& group)
{
    return readPersistent(settingGroup(group), key, def);
}

bool DataSaveControl::saveSettingData(const QString& key, const QVariant& value, const QString& group)
{
    const bool ok = savePersistent(settingGroup(group), key, value);
    if (ok) {
        const QString shown = group.isEmpty() ? key : group + QLatin1Char('/') + key;
        emit notifier()->dataSaved(QString::fromLatin1(kSetting), shown, value);
    }
    return ok;
}

QVariant DataSaveControl::readTempData(const QString& key, const QVariant& def)
{
    Store& s = store();
    QMutexLocker lock(&s.mutex);
    return s.temp.value(key, def);
}

bool DataSaveControl::saveTempData(const QString& key, const QVariant& value)
{
    {
        Store& s = store();
        QMutexLocker lock(&s.mutex);
        s.temp.insert(key, value);
    }
    emit notifier()->dataSaved(QString::fromLatin1(kTemp), key, value);
    return true;
}

void DataSaveControl::reload()
{
    Store& s = store();
    QMutexLocker lock(&s.mutex);
    s.settings.reset();
    s.path.clear();
    s.temp.clear();
}

QString DataSaveControl::filePath()
{
    Store& s = store();
    QMutexLocker lock(&s.mutex);
    s.open();
    return s.path;
}
