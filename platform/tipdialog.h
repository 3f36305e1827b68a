#ifndef TIPDIALOG_H
#define TIPDIALOG_H

#include <QList>
#include <QObject>
#include <QPair>
#include <QString>

// A transient message on the screen. The desktop keeps every message so that
// a host can show them and a test can read them back.
class TipDialog : public QObject
{
    Q_OBJECT
public:
    static TipDialog* getInstance();

    // `type` is passed through as given (callers on the bus side pass 0).
    static void showMessage(const QString& text, int type);

    static QString lastMessage();
    // Every message shown, oldest first, with its type.
    static QList<QPair<QString, int>> messages();
    static void reset();

signals:
    void messageShown(QString text, int type);

private:
    TipDialog();

    QList<QPair<QString, int>> m_messages;
};

#endif // TIPDIALOG_H
