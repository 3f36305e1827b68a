// Any byte string as what the head unit asks of a driver: command keys, source
// reports, clock, reverse, calls, power, language and panel commands with arbitrary
// values. See commandcase.h for the layout; commands.dict holds the command keys.

#include <cstddef>
#include <cstdint>

#include "commandcase.h"
#include "fuzzsetup.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    canbusfuzz::fuzzModule(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace canbusfuzz;
    failOnMalformedFrame(runCommands(fuzzModule(), FuzzInput(data, size)));
    return 0;
}
