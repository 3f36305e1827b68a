#include "languagemanager.h"

LanguageManager::LanguageManager()
    : m_language(QStringLiteral("en"))
{
}

LanguageManager* LanguageManager::getInstance()
{
    static auto* instance = new LanguageManager;
    return instance;
}

QString LanguageManager::language() const
{
    return m_language;
}

void LanguageManager::setLanguage(const QString& code)
{
    // Listeners rebuild translated catalogues and send frames to the vehicle;
    // a repeated code must not cost that again.
    if (code == m_language)
        return;
    m_language = code;
    emit languageChanged(code);
}
