#ifndef DATASAVECONTROL_H
#define DATASAVECONTROL_H

#include <QObject>
#include <QString>
#include <QVariant>

// The head unit's key-value store. User, factory and setting data live in an
// INI file, `canbus.ini`, in the directory named by CANBUS_DATA_DIR or else in
// "<generic config dir>/canbus"; every save reaches the disk before it returns,
// so the next process (or the next start of this one) reads it back.
// Temporary data lives in memory only and is gone at the next start.
//
// Values come back as QVariant. After a restart the INI file gives them back as
// text, which still converts with toBool(), toInt() and toDouble().
//
// All functions are static and safe to call from any thread.
class DataSaveControl : public QObject
{
    Q_OBJECT
public:
    static QVariant readUserData(const QString& key, const QVariant& def = QVariant());
    static bool saveUserData(const QString& key, const QVariant& value);

    static QVariant readFactoryData(const QString& key, const QVariant& def = QVariant());
    static bool saveFactoryData(const QString& key, const QVariant& value);

    // A non-empty `group` is a section of its own below the settings.
    static QVariant readSettingData(const QString& key, const QVariant& def = QVariant(),
                                    const QString& group = QString());
    static bool saveSettingData(const QString& key, const QVariant& value,
                                const QString& group = QString());

    static QVariant readTempData(const QString& key, const QVariant& def = QVariant());
    static bool saveTempData(const QString& key, const QVariant& value);

    // Emits dataSaved() for every save, whatever its kind.
    static DataSaveControl* notifier();

    // Starts over as a new process would: the directory is looked up again and
    // the temporary data is dropped. Persisted data is untouched.
    static void reload();
    // The INI file in use (resolving the directory if nothing was read yet).
    static QString filePath();

signals:
    // `kind` is "user", "factory", "setting" or "temp"; a setting saved in a
    // group has the key "<group>/<key>".
    void dataSaved(QString kind, QString key, QVariant value);

private:
    DataSaveControl();
};

#endif // DATASAVECONTROL_H
