// Coverage-guided fuzzing of the record decoders and of the configuration file check: every
// input must hold what DecoderChecks.h demands. The run stops at the first input that does not.

#include "DecoderChecks.h"

using namespace scorvane;
using namespace scorvane::testing;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TempDir folder; // one per run, removed when the run ends
    const Bytes input(data, data + size);
    if (!upsetDecoder(input).empty() || (size <= 4096 && !configurationCheckHolds(folder, input)))
        __builtin_trap();
    return 0;
}
