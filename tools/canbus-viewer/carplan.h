#pragma once
// The car seen from above, front up: doors, bonnet and tailgate drawn open when they
// are, and the eight parking sensors as bars in front of and behind it.

#include <QWidget>

#include "viewerstate.h"

namespace viewer {

class CarPlan : public QWidget
{
public:
    explicit CarPlan(QWidget* parent = nullptr);
    void setView(const DoorsView& doors, const RadarView& radar);
    QSize sizeHint() const override { return {260, 380}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void drawRadar(QPainter& p, const QRectF& car, const QVector<int>& sensors, bool front) const;

    DoorsView m_doors;
    RadarView m_radar;
};

} // namespace viewer
