#ifndef LANGUAGEMANAGER_H
#define LANGUAGEMANAGER_H

#include <QObject>
#include <QString>

// The system language, as a short code ("en", "ch_jt", "ko" ...). The host
// sets it; modules follow languageChanged().
class LanguageManager : public QObject
{
    Q_OBJECT
public:
    static LanguageManager* getInstance();

    QString language() const;
    // Emits languageChanged() only when the code differs from the current one.
    void setLanguage(const QString& code);

signals:
    void languageChanged(QString code);

private:
    LanguageManager();

    QString m_language;
};

#endif // LANGUAGEMANAGER_H
