// bench: prints how the library's long jobs compare with bare programs. Exit code 0 when all bounds are kept.
#include "tests/bench/subjects.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <random>

int main()
{
    using namespace vellumo;
    const auto folder =
        std::filesystem::temp_directory_path() / ("vellumo-bench-" + std::to_string(std::random_device()()));
    int code = 2;
    try
    {
        std::filesystem::create_directories(folder);
        bool good = true;
        good = bench::MeasureTables(folder) && good;
        bench::MeasureMessages();
        good = bench::MeasureProgress(folder) && good;
        good = bench::MeasurePatients(folder) && good;
        code = good ? 0 : 1;
    }
    catch (const std::exception& fault)
    {
        std::fprintf(stderr, "bench: %s\n", fault.what());
    }
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    return code;
}
