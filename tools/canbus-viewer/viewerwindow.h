#pragma once
// The viewer's window: climate panel and car plan side by side, the last keys and
// prompts below them, the command keys at the bottom and the port's state in the
// status bar.

#include <QMainWindow>
#include <QPixmap>
#include <QTimer>

#include "viewerstate.h"

class QLabel;
class QListWidget;

namespace viewer {

class CarPlan;
class ClimatePanel;
class CommandPanel;

class ViewerWindow : public QMainWindow
{
    Q_OBJECT
public:
    ViewerWindow(const ViewerState& state, const QString& title, QWidget* parent = nullptr);

    // Something changed: the window is redrawn soon, once however many changes come.
    void stateChanged();
    void showStatus(const QString& text);
    void setReverse(bool on);
    // The window as it is drawn now, changes still waiting for the next redraw included.
    QPixmap picture();

signals:
    void command(const QString& key, const QString& value);
    void reverse(bool on);

private:
    void refresh();

    const ViewerState& m_state;
    ClimatePanel* m_climate;
    CarPlan* m_plan;
    QListWidget* m_keys;
    QListWidget* m_prompts;
    CommandPanel* m_commands;
    QLabel* m_port;
    QTimer m_refresh;
};

} // namespace viewer
