#include "viewerwindow.h"

#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QStatusBar>

#include "carplan.h"
#include "climatepanel.h"
#include "commandpanel.h"

namespace viewer {

namespace {

// A box that sends garbage can make the module report many times a second; the
// window is drawn at most this often, whatever comes.
constexpr int kRefreshMs = 50;

void fill(QListWidget* list, const QStringList& lines)
{
    list->clear();
    list->addItems(lines);
}

} // namespace

ViewerWindow::ViewerWindow(const ViewerState& state, const QString& title, QWidget* parent)
    : QMainWindow(parent)
    , m_state(state)
    , m_climate(new ClimatePanel)
    , m_plan(new CarPlan)
    , m_keys(new QListWidget)
    , m_prompts(new QListWidget)
    , m_commands(new CommandPanel)
    , m_port(new QLabel)
{
    setWindowTitle(title);
    auto* central = new QWidget;
    auto* grid = new QGridLayout(central);
    grid->addWidget(m_climate, 0, 0, 1, 2);
    grid->addWidget(m_plan, 0, 2, 3, 1);
    grid->addWidget(new QLabel(QStringLiteral("Last keys")), 1, 0);
    grid->addWidget(new QLabel(QStringLiteral("Last prompts")), 1, 1);
    grid->addWidget(m_keys, 2, 0);
    grid->addWidget(m_prompts, 2, 1);
    grid->addWidget(m_commands, 3, 0, 1, 3);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    m_keys->setMaximumHeight(120);
    m_prompts->setMaximumHeight(120);
    setCentralWidget(central);
    statusBar()->addPermanentWidget(m_port);

    m_refresh.setSingleShot(true);
    m_refresh.setInterval(kRefreshMs);
    connect(&m_refresh, &QTimer::timeout, this, &ViewerWindow::refresh);
    connect(m_commands, &CommandPanel::command, this, &ViewerWindow::command);
    connect(m_commands, &CommandPanel::reverse, this, &ViewerWindow::reverse);
    refresh();
}

void ViewerWindow::stateChanged()
{
    if (!m_refresh.isActive())
        m_refresh.start();
}

void ViewerWindow::showStatus(const QString& text)
{
    statusBar()->showMessage(text, 10000);
    stateChanged();
}

void ViewerWindow::setReverse(bool on)
{
    m_commands->setReverse(on);
}

QPixmap ViewerWindow::picture()
{
    m_refresh.stop();
    refresh();
    return grab();
}

void ViewerWindow::refresh()
{
    m_climate->setView(m_state.climate(), m_state.outdoor());
    m_plan->setView(m_state.doors(), m_state.radar());
    fill(m_keys, m_state.keys());
    fill(m_prompts, m_state.prompts());
    const PortState port = m_state.port();
    m_port->setText(ViewerState::portText(port));
    m_port->setStyleSheet(port == PortState::Lost ? QStringLiteral("color: white; background: #c03020; padding: 2px")
                                                  : QString());
}

} // namespace viewer
