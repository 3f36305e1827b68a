#pragma once
// The host: loads the canbus plug-in as the head unit's module manager does, sets up
// the desktop platform around it, and shows everything the module does.

#include <QHash>
#include <QObject>
#include <QPluginLoader>
#include <QString>
#include <QStringList>
#include <memory>

#include "hostevents.h"
#include "peers.h"
#include "recordwatch.h"

class InfoModule;
class QSocketNotifier;

namespace tqappframework {
class Module;
}

namespace host {

class KeyRecorder;
class SignalTap;

class Host : public QObject
{
    Q_OBJECT
public:
    struct Settings
    {
        QString pluginPath;
        int protocol = 0;
    };

    Host(const Settings& settings, HostEvents& output);
    ~Host() override;

    enum StartResult { Started, Failed, NoSuchProtocol };
    // Sets up the platform and the sibling modules and loads the plug-in; nothing of
    // the module runs yet. Unless it loaded, the error says why. Once is enough.
    bool load(QString* error);
    // Loads the plug-in if need be and starts the vehicle module on the port named by
    // CANBUS_BOX_PORT. Unless it started, the error says why.
    StartResult start(QString* error);
    // The plug-in, once loaded: the exported classes come from the same file.
    QString pluginPath() const { return m_loader.fileName(); }
    // Takes commands, one a line, from standard input until it ends.
    void readCommands();
    // One command line: "AirAC 1", "raw 2e 81 01 01 7c", "reverse on", "help" ...
    void runCommand(const QString& line);
    // A command key of the driver with its value, as the line "AirAC 1" sends it.
    void sendCommandKey(const QString& key, const QString& value);

private:
    struct Command
    {
        const char* name;
        const char* usage;
        bool (Host::*run)(const QStringList& args);
    };
    static const Command kCommands[];

    void registerPeers();
    void tapPlatform();
    void tapModule(QObject* facade);
    void onModuleSignal(const QMetaMethod& signal, const QVariantList& args);
    void readStdin();
    void callFacade(const char* slot, QGenericArgument first = QGenericArgument(),
                    QGenericArgument second = QGenericArgument());

    bool help(const QStringList& args);
    bool raw(const QStringList& args);
    bool reverse(const QStringList& args);
    bool power(const QStringList& args);
    bool call(const QStringList& args);
    bool language(const QStringList& args);
    bool source(const QStringList& args);
    bool quit(const QStringList& args);

    Settings m_settings;
    HostEvents& m_out;
    QPluginLoader m_loader;
    tqappframework::Module* m_module = nullptr;
    bool m_started = false;
    QObject* m_facade = nullptr;   // the module's CanbusModule, known by its meta-object only
    std::unique_ptr<KeyRecorder> m_keys;
    McuStandIn m_mcu;
    PhoneStandIn m_phone;
    SourceStandIn m_radio;
    SourceStandIn m_media;
    InfoModule* m_info = nullptr;
    RecordWatch m_records;
    QSocketNotifier* m_stdin = nullptr;
    QByteArray m_pendingInput;
};

} // namespace host
