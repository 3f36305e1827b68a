#pragma once
// Sends a command key of the driver with its value, as the line "AirAC 1" typed into
// canbus-host does. The usual climate keys are offered; any other key can be typed.

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace viewer {

class CommandPanel : public QWidget
{
    Q_OBJECT
public:
    explicit CommandPanel(QWidget* parent = nullptr);
    void setReverse(bool on);

    // The key as sent, or nothing when the text can't be a command key.
    static QString commandKey(const QString& text);

signals:
    void command(const QString& key, const QString& value);
    // The gear lever in or out of reverse: most vehicles show the radar only then.
    void reverse(bool on);

private:
    void send();

    QComboBox* m_key;
    QLineEdit* m_value;
    QCheckBox* m_reverse;
};

} // namespace viewer
