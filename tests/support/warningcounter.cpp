#include "warningcounter.h"

WarningCounter* WarningCounter::s_active = nullptr;

WarningCounter::WarningCounter(const char* category)
    : m_category(category)
{
    s_active = this;
    m_previous = qInstallMessageHandler(&WarningCounter::handle);
}

WarningCounter::~WarningCounter()
{
    qInstallMessageHandler(m_previous);
    s_active = nullptr;
}

void WarningCounter::handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    WarningCounter* self = s_active;
    if (type == QtWarningMsg && context.category && self->m_category == context.category) {
        ++self->m_count;
        return;
    }
    self->m_previous(type, context, text);
}
