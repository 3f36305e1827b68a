#pragma once
// The climate panel: the two set points, the blower's step and the modes, each mode
// lit when on, dim when off and left out when the vehicle has no such control.

#include <QWidget>

#include "viewerstate.h"

namespace viewer {

class ClimatePanel : public QWidget
{
public:
    explicit ClimatePanel(QWidget* parent = nullptr);
    void setView(const ClimateView& view, const QString& outdoor);
    QSize sizeHint() const override { return {360, 260}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ClimateView m_view;
    QString m_outdoor;
};

} // namespace viewer
