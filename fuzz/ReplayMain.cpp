// Runs a fuzz target over saved inputs, for toolchains without libFuzzer.
//
// Usage: <target> PATH...
// Each PATH is a file or a directory; a directory contributes every regular
// file in it (not recursing), in name order so that runs are repeatable. The
// empty input runs first, as libFuzzer does. A failed check traps inside the
// target, which ends the process abnormally; a missing path, an unreadable
// file, or no input at all exits with status 1.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

// libFuzzer never passes a null pointer, not even for the empty input.
void run(const std::vector<std::uint8_t>& bytes) {
    static const std::uint8_t nothing = 0;
    LLVMFuzzerTestOneInput(bytes.empty() ? &nothing : bytes.data(), bytes.size());
}

bool runFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "cannot open %s\n", path.string().c_str());
        return false;
    }
    const std::vector<char> contents{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (file.bad()) {
        std::fprintf(stderr, "cannot read %s\n", path.string().c_str());
        return false;
    }
    std::vector<std::uint8_t> bytes(contents.begin(), contents.end());
    std::fprintf(stderr, "running %s (%zu bytes)\n", path.string().c_str(), bytes.size());
    // Handed over in a buffer of exactly its size, so that the address
    // sanitizer sees any read past the end.
    run(bytes);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s PATH...\n", argc > 0 ? argv[0] : "replay");
        return 1;
    }

    run({});

    std::size_t inputs = 0;
    for (int index = 1; index < argc; ++index) {
        const std::filesystem::path path(argv[index]);
        std::error_code error;
        if (std::filesystem::is_directory(path, error)) {
            std::vector<std::filesystem::path> files;
            for (const auto& entry : std::filesystem::directory_iterator(path, error)) {
                if (entry.is_regular_file()) {
                    files.push_back(entry.path());
                }
            }
            if (error) {
                std::fprintf(stderr, "cannot list %s: %s\n", path.string().c_str(), error.message().c_str());
                return 1;
            }
            std::sort(files.begin(), files.end());
            for (const auto& file : files) {
                if (!runFile(file)) {
                    return 1;
                }
                ++inputs;
            }
        } else if (std::filesystem::is_regular_file(path, error)) {
            if (!runFile(path)) {
                return 1;
            }
            ++inputs;
        } else {
            std::fprintf(stderr, "no such file or directory: %s\n", path.string().c_str());
            return 1;
        }
    }

    if (inputs == 0) {
        std::fprintf(stderr, "no inputs found\n");
        return 1;
    }
    std::fprintf(stderr, "replayed %zu inputs without a failure\n", inputs);
    return 0;
}
