// The scenario parser on any text: steps, or BadScript with the line of the fault.
#include "hosts/script/Failure.h"
#include "hosts/script/ScenarioParser.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    try {
        script::parseScenario(text, "fuzz.scn", std::filesystem::temp_directory_path(),
                              {"register", "orders"});
    } catch (const script::BadScript &) {
        // The answer to a bad scenario, before any of it runs.
    }
    return 0;
}
