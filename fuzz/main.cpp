// fuzz_adviser [SEED]: runs the model without libFuzzer, on the inputs of the corpus and then on
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
    const uint32_t seed =
        argc > 1 ? static_cast<uint32_t>(strtoul(argv[1], nullptr, 10)) : std::random_device()();
    fprintf(stderr, "seed %u\n", seed); // unbuffered, in case the model aborts
    for (const auto& entry : std::filesystem::directory_iterator(CORPUS)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<uint8_t> input{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::mt19937 random(seed);
    for (int i = 0; i < 2000; i++) {
        std::vector<uint8_t> input(random() % 256);
        for (uint8_t& byte : input) {
            byte = static_cast<uint8_t>(random());
        }
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
}
