#pragma once
// The host's side of the microcontroller link: it creates the plug-in's MCU link on
// CANBUS_MCU_PORT as the head unit's "mcu" module does, starts it as if the first
// frame were on screen, and shows what it does: ignition, night mode, update messages
// and progress (keys and touches arrive through the host's input recorder). It can
// also feed a firmware file to the MCU and say when the MCU has taken it.

#include <QLibrary>
#include <QObject>
#include <QString>

class QMetaMethod;
class QTimer;

namespace host {

class HostOutput;

class McuHost : public QObject
{
    Q_OBJECT
public:
    McuHost(HostOutput& output, QObject* parent = nullptr);
    ~McuHost() override;

    // Creates the link from the plug-in at `pluginPath`; unless it could, `error` says why.
    bool start(const QString& pluginPath, QString* error);
    void startUpdate(const QString& firmwarePath);

signals:
    // The link's own result: 0 when the MCU has reported the update done, -1 when
    // the update could not start.
    void updateFinished(int result);

private:
    void onLinkSignal(const QMetaMethod& signal, const QVariantList& args);
    void onStalled();

    HostOutput& m_out;
    QLibrary m_library;
    QObject* m_link = nullptr;
    QTimer* m_stallTimer;
};

} // namespace host
