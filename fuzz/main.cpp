// MODEL CORPUS [SEED]: runs a model without libFuzzer, on the inputs of its corpus and then on
// random ones. It prints the seed of these; SEED repeats a run.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv)
{
    constexpr int INPUTS = 2000;
    if (argc < 2) {
        return 2;
    }
    const uint32_t seed =
        argc > 2 ? static_cast<uint32_t>(strtoul(argv[2], nullptr, 10)) : std::random_device()();
    printf("%s %s %u\n", argv[0], argv[1], seed);
    fflush(stdout); // in case the model aborts
    const auto run = [](const std::vector<char>& input) {
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.data()), input.size());
    };
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        run({std::istreambuf_iterator<char>(file), {}});
        files++;
    }
    std::mt19937 random(seed);
    for (int i = 0; i < INPUTS; i++) {
        std::vector<char> input(random() % 256);
        for (char& byte : input) {
            byte = static_cast<char>(random());
        }
        run(input);
    }
    printf("%d inputs of the corpus, %d random ones\n", files, INPUTS);
    return files > 0 ? 0 : 1;
}
