// Any byte string as box input: a driver chosen by the first byte, the rest split into
// reads and fed through the whole receive path (reassembly, check, walk, the driver's
// parser, records, signals). See receivecase.h for the layout.

#include <cstddef>
#include <cstdint>

#include "fuzzsetup.h"
#include "receivecase.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    canbusfuzz::fuzzModule(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace canbusfuzz;
    failOnMalformedFrame(runReceive(fuzzModule(), decodeReceive(FuzzInput(data, size))));
    return 0;
}
