#include "carplan.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace viewer {

namespace {

const QColor kBody(0x8a, 0x93, 0x9e);
const QColor kOpen(0xe0, 0x40, 0x30);
const QColor kBackground(0x1c, 0x1f, 0x24);
const QColor kUnlit(0x3a, 0x3f, 0x46);
constexpr int kShownLevels = 4;   // a radar without a scale still gets bars to light

// Near is red, far is green.
QColor levelColour(int lit, int levels)
{
    return QColor::fromHsvF(0.33 * (1.0 - RadarView::nearness(lit, levels)), 0.85, 0.95);
}

// A door along a side of the body: closed it lies on the side, open it swings out
// from its front hinge.
void drawDoor(QPainter& p, const QPointF& hinge, double length, bool leftSide, bool open)
{
    const double dir = leftSide ? -1.0 : 1.0;
    p.setPen(QPen(open ? kOpen : kBody.darker(130), open ? 4 : 3, Qt::SolidLine, Qt::RoundCap));
    const QPointF end = open ? hinge + QPointF(dir * length * 0.7, length * 0.7) : hinge + QPointF(0, length);
    p.drawLine(hinge, end);
}

} // namespace

CarPlan::CarPlan(QWidget* parent) : QWidget(parent)
{
    setMinimumSize(220, 340);
}

void CarPlan::setView(const DoorsView& doors, const RadarView& radar)
{
    m_doors = doors;
    m_radar = radar;
    update();
}

void CarPlan::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rect(), kBackground);

    const double carW = std::min(width() * 0.38, height() * 0.22);
    const double carH = carW * 2.1;
    const QRectF car((width() - carW) / 2, (height() - carH) / 2, carW, carH);
    const double bonnetH = carH * 0.22;
    const double tailH = carH * 0.14;

    p.setPen(Qt::NoPen);
    p.setBrush(kBody);
    p.drawRoundedRect(car, carW * 0.2, carW * 0.2);
    // The cabin's glass.
    p.setBrush(kBackground.lighter(140));
    p.drawRoundedRect(car.adjusted(carW * 0.14, bonnetH + 6, -carW * 0.14, -tailH - 6), 6, 6);

    // Bonnet and tailgate: open, they are drawn red and lifted off the body.
    const QRectF bonnet(car.left() + 4, car.top() + 4, carW - 8, bonnetH - 6);
    const QRectF tailgate(car.left() + 4, car.bottom() - tailH + 2, carW - 8, tailH - 6);
    p.setBrush(m_doors.bonnet ? kOpen : kBody.lighter(110));
    p.drawRoundedRect(m_doors.bonnet ? bonnet.translated(0, -10) : bonnet, 6, 6);
    p.setBrush(m_doors.tailgate ? kOpen : kBody.lighter(110));
    p.drawRoundedRect(m_doors.tailgate ? tailgate.translated(0, 10) : tailgate, 4, 4);

    const double doorLen = (carH - bonnetH - tailH) / 2 - 4;
    const double frontHinge = car.top() + bonnetH + 2;
    const double rearHinge = frontHinge + doorLen + 4;
    drawDoor(p, {car.left(), frontHinge}, doorLen, true, m_doors.frontLeft);
    drawDoor(p, {car.right(), frontHinge}, doorLen, false, m_doors.frontRight);
    drawDoor(p, {car.left(), rearHinge}, doorLen, true, m_doors.rearLeft);
    drawDoor(p, {car.right(), rearHinge}, doorLen, false, m_doors.rearRight);

    drawRadar(p, car, m_radar.front, true);
    drawRadar(p, car, m_radar.rear, false);

    p.setPen(Qt::white);
    p.drawText(QRectF(0, 0, width(), 18), Qt::AlignCenter, m_radar.on ? QStringLiteral("radar on") : QStringLiteral("radar off"));
}

// Four sensors across the bumper; each bar grows away from the car, a segment a level.
void CarPlan::drawRadar(QPainter& p, const QRectF& car, const QVector<int>& sensors, bool front) const
{
    const int levels = m_radar.levels > 0 ? m_radar.levels : kShownLevels;
    const double span = car.width() * 1.5;
    const double barW = span / std::max(1, int(sensors.size())) - 4;
    const double depth = std::min(70.0, (height() - car.height()) / 2 - 22);
    const double segment = depth / levels;
    for (int i = 0; i < sensors.size(); ++i) {
        const double x = car.center().x() - span / 2 + i * (barW + 4) + 2;
        const int lit = int(RadarView::share(sensors.at(i), levels) * levels + 0.5);
        for (int s = 0; s < levels; ++s) {
            // Segment 0 touches the bumper; the lit ones start there.
            const double offset = 4 + s * segment;
            const double y = front ? car.top() - offset - segment : car.bottom() + offset;
            p.fillRect(QRectF(x, y + 1, barW, segment - 2),
                       m_radar.on && s < lit ? levelColour(sensors.at(i), levels) : kUnlit);
        }
    }
}

} // namespace viewer
