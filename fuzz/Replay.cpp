// main() of a fuzz target in a build without libFuzzer: runs the target once on every file
// named, or found in a folder named, so that the seeds and every input that once crashed
// a target stay in the test suite.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

void replay(const std::filesystem::path &file) {
    std::ifstream in(file, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)),
                            std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char **argv) {
    std::size_t inputs = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path = argv[i];
        if (std::filesystem::is_directory(path)) {
            for (const auto &entry : std::filesystem::recursive_directory_iterator(path)) {
                if (entry.is_regular_file()) {
                    replay(entry.path());
                    ++inputs;
                }
            }
        } else if (std::filesystem::is_regular_file(path)) {
            replay(path);
            ++inputs;
        } else {
            std::cerr << "no such input: " << path << '\n';
            return 2;
        }
    }
    if (inputs == 0) {
        // An empty corpus would make this test pass without running the target once.
        std::cerr << "no inputs to replay\n";
        return 2;
    }
    std::cout << "replayed " << inputs << " inputs\n";
    return 0;
}
