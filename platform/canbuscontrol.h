#ifndef CANBUSCONTROL_H
#define CANBUSCONTROL_H

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

// Publishes named properties of the vehicle bus to the rest of the system
// ("ShowAirconditioner" ...). Callers use both CanbusControl::setOtherProperty()
// and getInstance()->setOtherProperty(); the static form serves both.
class CanbusControl : public QObject
{
    Q_OBJECT
public:
    static CanbusControl* getInstance();

    // Emits otherPropertyChanged() for every call: a repeated request (show the
    // climate bar again) is an event of its own.
    static void setOtherProperty(const QString& name, const QVariant& value);
    static QVariant otherProperty(const QString& name);
    static QStringList otherPropertyNames();
    static void reset();

signals:
    void otherPropertyChanged(QString name, QVariant value);

private:
    CanbusControl();

    QHash<QString, QVariant> m_properties;
};

#endif // CANBUSCONTROL_H
