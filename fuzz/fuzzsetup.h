#pragma once
// What the fuzz targets do once per process: one application object for the timers
// and deferred deletes, quiet logging, and the module the box targets share.

#include <QCoreApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QtGlobal>

#include <cstdio>
#include <cstdlib>

#include "fuzzmodule.h"

namespace canbusfuzz {

// Qt's own warnings (a driver's timer with a strange interval, say) would flood the
// engine's output; CANBUS_FUZZ_VERBOSE=1 lets them through. Fatal messages still abort.
inline void quietMessages(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    static const bool verbose = qEnvironmentVariableIntValue("CANBUS_FUZZ_VERBOSE") != 0;
    if (verbose || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

// Once per process: the application object, quiet messages and logging.
inline void setUpProcess(int* argc, char*** argv)
{
    qInstallMessageHandler(quietMessages);
    QLoggingCategory::setFilterRules(QStringLiteral("canbus.*=false"));
    static int fallbackArgc = 1;
    static char name[] = "canbus-fuzz";
    static char* fallbackArgv[] = {name, nullptr};
    if (QCoreApplication::instance())
        return;
    if (argc && argv)
        new QCoreApplication(*argc, *argv);
    else
        new QCoreApplication(fallbackArgc, fallbackArgv);
}

// Created on the first call and kept until the process ends.
inline FuzzModule& fuzzModule(int* argc = nullptr, char*** argv = nullptr)
{
    static FuzzModule* module = [argc, argv] {
        setUpProcess(argc, argv);
        auto* created = new FuzzModule;
        // The module lives as long as the process, so its settings directory would
        // outlive it; the engine ends a run with exit(), which runs this.
        std::atexit([] { QDir(fuzzModule().dataDir()).removeRecursively(); });
        return created;
    }();
    return *module;
}

// Stops the run with the engine's crash handling when an invariant breaks.
inline void failOnMalformedFrame(const QByteArray& frame)
{
    if (frame.isEmpty())
        return;
    std::fprintf(stderr, "malformed frame sent towards the box: %s\n", frame.toHex(' ').constData());
    std::abort();
}

} // namespace canbusfuzz
