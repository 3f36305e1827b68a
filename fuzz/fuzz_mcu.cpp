// Any byte string as what the head unit's microcontroller sends: 0x2E and 0xFF 0x55
// frames, junk, cut anywhere, during a firmware update or not, through a fresh MCU
// link. See mcucase.h for the layout.

#include <QCoreApplication>
#include <QDir>
#include <QLoggingCategory>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "fuzzsetup.h"
#include "mcucase.h"

namespace {

canbusfuzz::McuFuzzLink& mcuLink(int* argc = nullptr, char*** argv = nullptr)
{
    static canbusfuzz::McuFuzzLink* link = [argc, argv] {
        canbusfuzz::setUpProcess(argc, argv);
        auto* created = new canbusfuzz::McuFuzzLink;
        std::atexit([] { QDir(mcuLink().dataDir()).removeRecursively(); });
        return created;
    }();
    return *link;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    mcuLink(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    mcuLink().run(canbusfuzz::decodeMcu(canbusfuzz::FuzzInput(data, size)));
    return 0;
}
