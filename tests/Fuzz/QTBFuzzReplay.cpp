// Runs a fuzz target without libFuzzer: every file of the folders named, then simple mutations of them, the same ones
// each time.
//
//   QTB_FUZZ_MUTATIONS   how many mutations (500)
//   QTB_FUZZ_SECONDS     after how many seconds no further one is begun (6)
//   QTB_FUZZ_SEED        where the sequence of mutations begins (1)
//
// The input at hand is kept in a file while it runs; when the program dies in it, the file is what to keep as a
// regression.

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fs = std::filesystem;

namespace {

using Inputs = std::vector<std::string>;

constexpr std::size_t LONGEST_INPUT = 20000;

Inputs ReadFolders(int count, char** folders)
{
    Inputs inputs;
    for (int i = 0; i < count; ++i) {
        std::vector<fs::path> paths;
        if (fs::is_regular_file(folders[i])) {
            paths.emplace_back(folders[i]);
        } else if (fs::is_directory(folders[i])) {
            std::copy(fs::directory_iterator(folders[i]), fs::directory_iterator(), std::back_inserter(paths));
        }
        std::sort(paths.begin(), paths.end());
        for (const fs::path& path : paths) {
            std::ifstream file(path, std::ios::binary);
            inputs.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
    }
    return inputs;
}

class Mutator
{
public:
    Mutator(const Inputs& inputs, unsigned int seed) : m_Inputs(inputs), m_Random(seed) {}

    std::string Make()
    {
        std::string input = Any();
        for (std::size_t i = 1 + Random(4); i > 0; --i) {
            Change(&input);
        }
        input.resize(std::min(input.size(), LONGEST_INPUT));
        return input;
    }

private:
    // The same on every platform, unlike the distributions of the standard library.
    std::size_t Random(std::size_t count) { return count > 0 ? m_Random() % count : 0; }
    const std::string& Any() { return m_Inputs[Random(m_Inputs.size())]; }
    std::string PieceOf(const std::string& text)
    {
        const std::size_t from = Random(text.size() + 1);
        return text.substr(from, Random(80));
    }

    void Change(std::string* pInput)
    {
        const std::size_t at = Random(pInput->size() + 1);
        switch (Random(6)) {
        case 0:
            if (at < pInput->size()) {
                (*pInput)[at] = static_cast<char>(Random(256));
            }
            break;
        case 1:
            pInput->erase(at, 1 + Random(40));
            break;
        case 2:
            pInput->insert(at, PieceOf(*pInput));
            break;
        case 3:
            pInput->insert(at, PieceOf(Any()));
            break;
        case 4:
            pInput->replace(at, Random(20), PieceOf(Any()));
            break;
        default:
            // A name in place of another one of the same length: keys, classes and types that fit.
            if (const std::string piece = PieceOf(Any()); at + piece.size() < pInput->size()) {
                pInput->replace(at, piece.size(), piece);
            }
            break;
        }
    }

    const Inputs& m_Inputs;
    std::mt19937 m_Random;
};

unsigned int GetNumber(const char* name, unsigned int byDefault)
{
    const char* value = std::getenv(name);
    return value != nullptr ? static_cast<unsigned int>(std::strtoul(value, nullptr, 10)) : byDefault;
}

class Runner
{
public:
    explicit Runner(const std::string& name)
        : m_Path((fs::temp_directory_path() / (name + "-" + std::to_string(getpid()) + ".input")).string())
    {
        std::fprintf(stderr, "the input that runs is in %s\n", m_Path.c_str());
    }
    Runner(const Runner&) = delete;
    Runner& operator=(const Runner&) = delete;
    ~Runner() { std::remove(m_Path.c_str()); }

    void Run(const std::string& input)
    {
        std::ofstream(m_Path, std::ios::binary | std::ios::trunc) << input;
        // A copy of its own, so that reading behind the end is seen.
        const std::vector<std::uint8_t> bytes(input.begin(), input.end());
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        ++m_Count;
    }

    int GetCount() const { return m_Count; }

private:
    std::string m_Path;
    int m_Count = 0;
};

} // namespace

int main(int argc, char** argv)
{
    const fs::path program(*argv);
    const Inputs inputs = ReadFolders(argc - 1, argv + 1);
    if (inputs.empty()) {
        std::fprintf(stderr, "usage: %s FOLDER|FILE...\nthere is no input\n", program.c_str());
        return 2;
    }
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(GetNumber("QTB_FUZZ_SECONDS", 6));
    Runner runner(program.filename().string());
    for (const std::string& input : inputs) {
        runner.Run(input);
    }
    Mutator mutator(inputs, GetNumber("QTB_FUZZ_SEED", 1));
    for (unsigned int i = GetNumber("QTB_FUZZ_MUTATIONS", 500); i > 0 && Clock::now() < end; --i) {
        runner.Run(mutator.Make());
    }
    std::fprintf(stderr, "%d inputs\n", runner.GetCount());
    return 0;
}
