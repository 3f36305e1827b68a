#include "tipdialog.h"

TipDialog::TipDialog() = default;

TipDialog* TipDialog::getInstance()
{
    static auto* instance = new TipDialog;
    return instance;
}

void TipDialog::showMessage(const QString& text, int type)
{
    TipDialog* self = getInstance();
    self->m_messages.append(qMakePair(text, type));
    emit self->messageShown(text, type);
}

QString TipDialog::lastMessage()
{
    const TipDialog* self = getInstance();
    return self->m_messages.isEmpty() ? QString() : self->m_messages.constLast().first;
}

QList<QPair<QString, int>> TipDialog::messages()
{
    return getInstance()->m_messages;
}

void TipDialog::reset()
{
    getInstance()->m_messages.clear();
}
