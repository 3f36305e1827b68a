#include "climatepanel.h"

#include <QPainter>

#include <algorithm>

namespace viewer {

namespace {

constexpr int kFanSteps = 7;   // drawn at least this many; a vehicle with more widens the row
const QColor kLit(0x2e, 0xa0, 0xe0);
const QColor kDim(0x50, 0x55, 0x5c);
const QColor kText(0xe8, 0xe8, 0xe8);
const QColor kBackground(0x1c, 0x1f, 0x24);

void drawSetPoint(QPainter& p, const QRect& box, const QString& text, const QString& side)
{
    p.setPen(kDim);
    p.setFont(QFont(p.font().family(), 9));
    p.drawText(box.adjusted(0, 0, 0, -box.height() / 2), Qt::AlignCenter, side);
    p.setPen(kText);
    QFont big(p.font().family(), 22, QFont::Bold);
    p.setFont(big);
    p.drawText(box.adjusted(0, box.height() / 3, 0, 0), Qt::AlignCenter, text.isEmpty() ? QStringLiteral("--") : text);
}

} // namespace

ClimatePanel::ClimatePanel(QWidget* parent) : QWidget(parent)
{
    setMinimumSize(320, 230);
}

void ClimatePanel::setView(const ClimateView& view, const QString& outdoor)
{
    m_view = view;
    m_outdoor = outdoor;
    update();
}

void ClimatePanel::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rect(), kBackground);
    const int w = width();

    // Header: the climate's power and the outdoor temperature.
    p.setFont(QFont(p.font().family(), 10, QFont::Bold));
    p.setPen(m_view.power == Mode::On ? kLit : kDim);
    const QString power = m_view.power == Mode::Absent ? QStringLiteral("CLIMATE")
        : m_view.power == Mode::On                     ? QStringLiteral("CLIMATE ON")
                                                       : QStringLiteral("CLIMATE OFF");
    p.drawText(QRect(10, 6, w / 2, 20), Qt::AlignLeft | Qt::AlignVCenter, power);
    p.setPen(kText);
    p.drawText(QRect(w / 2, 6, w / 2 - 10, 20), Qt::AlignRight | Qt::AlignVCenter,
               QStringLiteral("outside ") + (m_outdoor.isEmpty() ? QStringLiteral("--") : m_outdoor));

    drawSetPoint(p, QRect(0, 30, w / 3, 70), m_view.tempLeft, QStringLiteral("left"));
    drawSetPoint(p, QRect(2 * w / 3, 30, w / 3, 70), m_view.tempRight, QStringLiteral("right"));

    // The blower: a bar for each step, as many lit as the step.
    const int steps = std::max(kFanSteps, m_view.fan);
    const QRect fan(w / 3 + 8, 45, w / 3 - 16, 50);
    const double barWidth = double(fan.width()) / steps;
    for (int i = 0; i < steps; ++i) {
        const int h = fan.height() * (i + 1) / steps;
        const QRectF bar(fan.left() + i * barWidth + 1, fan.bottom() - h, barWidth - 2, h);
        p.fillRect(bar, i < m_view.fan ? kLit : kDim);
    }
    p.setPen(kText);
    p.setFont(QFont(p.font().family(), 9));
    p.drawText(QRect(fan.left(), fan.bottom() + 2, fan.width(), 16), Qt::AlignCenter,
               m_view.fan < 0 ? QStringLiteral("fan --") : QStringLiteral("fan %1").arg(m_view.fan));

    // The modes the vehicle has, four to a row.
    QVector<ModeView> present;
    std::copy_if(m_view.modes.cbegin(), m_view.modes.cend(), std::back_inserter(present),
                 [](const ModeView& m) { return m.mode != Mode::Absent; });
    constexpr int kColumns = 4;
    const int chipW = (w - 20) / kColumns;
    for (int i = 0; i < present.size(); ++i) {
        const QRect chip(10 + (i % kColumns) * chipW, 125 + (i / kColumns) * 30, chipW - 6, 24);
        const bool on = present.at(i).mode == Mode::On;
        p.setPen(Qt::NoPen);
        p.setBrush(on ? kLit : kBackground.lighter(150));
        p.drawRoundedRect(chip, 5, 5);
        p.setPen(on ? Qt::white : kDim.lighter(140));
        p.drawText(chip, Qt::AlignCenter, present.at(i).label);
    }
}

} // namespace viewer
