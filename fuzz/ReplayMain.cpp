// Runs a fuzz target's function once over every file given on the command line, folders read
// file by file in name order: the plain program that replays a corpus without libFuzzer.
// A fault in the function ends the program the way it ends the fuzzer (a trap, an abort, a
// sanitizer report); an argument that names nothing, or a folder with no file, is an error,
// so that a corpus that went missing does not pass as replayed.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> InputsOf(const std::filesystem::path& argument)
{
    std::vector<std::filesystem::path> files;
    if (std::filesystem::is_directory(argument)) {
        for (const auto& entry : std::filesystem::directory_iterator(argument)) {
            if (entry.is_regular_file()) {
                files.push_back(entry.path());
            }
        }
        std::sort(files.begin(), files.end());
    } else if (std::filesystem::is_regular_file(argument)) {
        files.push_back(argument);
    }
    return files;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s CORPUS_FOLDER_OR_FILE...\n", argv[0]);
        return 2;
    }
    std::size_t replayed = 0;
    for (int a = 1; a < argc; ++a) {
        const auto files = InputsOf(argv[a]);
        if (files.empty()) {
            std::fprintf(stderr, "%s: no input in '%s'\n", argv[0], argv[a]);
            return 2;
        }
        for (const auto& file : files) {
            std::ifstream in(file, std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(in),
                                          std::istreambuf_iterator<char>()};
            if (!in.eof() && in.fail()) {
                std::fprintf(stderr, "%s: cannot read '%s'\n", argv[0], file.c_str());
                return 2;
            }
            // A copy of exactly the input's length, so that a read past its end is seen.
            std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
            std::fprintf(stderr, "replaying %s (%zu bytes)\n", file.c_str(), data.size());
            LLVMFuzzerTestOneInput(data.data(), data.size());
            ++replayed;
        }
    }
    std::printf("%zu inputs replayed\n", replayed);
    return 0;
}
