#pragma once
// Counts the warnings of one logging category while it lives, and keeps them off the
// test's output; everything else goes on to the handler it found.

#include <QByteArray>
#include <QtGlobal>

class WarningCounter
{
public:
    explicit WarningCounter(const char* category);
    ~WarningCounter();
    WarningCounter(const WarningCounter&) = delete;
    WarningCounter& operator=(const WarningCounter&) = delete;

    int count() const { return m_count; }

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text);

    static WarningCounter* s_active;
    QByteArray m_category;
    int m_count = 0;
    QtMessageHandler m_previous;
};
