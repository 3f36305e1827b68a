#include "commandpanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

namespace viewer {

namespace {

// The keys most drivers take; the list is only a start, the field is editable.
constexpr const char* kKeys[] = {
    "AirOnOff", "AirAC", "AirAUTO", "AirDUAL", "AirInnerLoop", "AirOuterLoop",
    "AirDefrostFront", "AirDefrostRear", "AirTempFrontLeft", "AirTempFrontRight",
    "AirWindSpeedFront", "AirWindSpeedAddSubFront", "AirWindUpFront", "AirWindFrontFront", "AirWindDownFront",
};

} // namespace

CommandPanel::CommandPanel(QWidget* parent)
    : QWidget(parent)
    , m_key(new QComboBox(this))
    , m_value(new QLineEdit(this))
    , m_reverse(new QCheckBox(QStringLiteral("Reverse"), this))
{
    m_key->setEditable(true);
    for (const char* key : kKeys)
        m_key->addItem(QLatin1String(key));
    m_value->setPlaceholderText(QStringLiteral("value"));
    m_value->setText(QStringLiteral("1"));
    auto* sendButton = new QPushButton(QStringLiteral("Send"), this);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(QStringLiteral("Command key"), this));
    layout->addWidget(m_key, 2);
    layout->addWidget(m_value, 1);
    layout->addWidget(sendButton);
    layout->addSpacing(12);
    layout->addWidget(m_reverse);
    connect(sendButton, &QPushButton::clicked, this, &CommandPanel::send);
    connect(m_value, &QLineEdit::returnPressed, this, &CommandPanel::send);
    connect(m_reverse, &QCheckBox::toggled, this, &CommandPanel::reverse);
}

void CommandPanel::setReverse(bool on)
{
    m_reverse->setChecked(on);
}

QString CommandPanel::commandKey(const QString& text)
{
    static const QRegularExpression key(QStringLiteral("^[A-Za-z][A-Za-z0-9_]*$"));
    const QString k = text.trimmed();
    return key.match(k).hasMatch() ? k : QString();
}

void CommandPanel::send()
{
    const QString key = commandKey(m_key->currentText());
    if (!key.isEmpty())
        emit command(key, m_value->text().simplified());
}

} // namespace viewer
