#pragma once
// Everything the host shows, one line per event, either for people
//     1.204  air     airPower=1 airAC=1 tempLeft="22"
//     1.730  key     166 down
//     2.113  update  [#########---------------------]  30%
// or, with --json, one JSON object per line for programs:
//     {"t":1.204,"event":"record","record":"air","changed":{"airPower":1,...}}

#include <QElapsedTimer>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <QVariantList>

#include <functional>

#include "hostevents.h"
#include "shownfields.h"

namespace host {

class HostOutput : public HostEvents
{
public:
    enum Format { Text, Json };
    explicit HostOutput(Format format);
    // Lines go into `lines` instead of standard output, one '\n' after each.
    HostOutput(Format format, QString* lines);

    // Where a line's time comes from, in seconds: by default the time since the
    // output was made; a program that plays a recording gives the recording's time.
    void setClock(std::function<double()> seconds) { m_seconds = std::move(seconds); }

    Format format() const { return m_format; }

    void record(const QString& name, const Fields& changed) override;
    // A signal of the module or of a platform stand-in, with its parameters' names.
    void signal(const QString& source, const QString& name, const QList<QByteArray>& parameterNames,
                const QVariantList& args) override;
    void key(int key, bool pressed) override;
    void deviceCall(const QByteArray& device, unsigned long request, unsigned long arg) override;
    void command(const QString& line) override;
    void trace(const QString& category, const QString& text) override;
    void info(const QString& text) override;
    // Problems while running; they don't end the host.
    void problem(const QString& text) override;
    // An event of another kind: `text` for people, `json` (without "t" and "event")
    // for programs.
    void event(const QString& kind, const QString& text, const QJsonObject& json);
    // A progress bar: on a terminal one line drawn over and over, below the other
    // lines; elsewhere a line for each new value (a JSON "progress" event with --json).
    void progress(int percent);
    // The bar is complete: the next line goes below it.
    void endProgress();

    // A value as a person reads it: texts quoted, bytes in hex.
    static QString valueText(const QVariant& value);
    static QJsonValue valueJson(const QVariant& value);

    static QString progressBar(int percent);

private:
    void emitLine(const QString& kind, const QString& text, QJsonObject json);
    void drawBar();

    Format m_format;
    QElapsedTimer m_clock;
    std::function<double()> m_seconds;
    QTextStream m_out;
    bool m_terminal;         // text on a terminal: the bar redraws in place
    QString m_bar;           // the bar on the terminal's last line, if any
    int m_lastPercent = -1;
};

} // namespace host
