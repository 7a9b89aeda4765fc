// The stand-in for the logging library.
#include "tools.h"

#include <kylog/kylog.h>

#include <sstream>

namespace {

TEST(KylogTest, WritesOneLineAMessage)
{
    testing::internal::CaptureStderr();
    ky_log(1, "UTILS", "Device ID (%u)\n", 254U);
    ky_log(3, "LAG", "warned\n");
    ky_log(7, "ADVISER", "no newline %s", "here");
    ky_log(2, "X", "\n");
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "ERROR   UTILS: Device ID (254)\n"
                                                "WARN    LAG: warned\n"
                                                "NOTICE  ADVISER: no newline here\n"
                                                "UNKNOWN X: \n");
}

TEST(KylogTest, TraceBufferKeepsTheNewestRecordsOfManyThreads)
{
    const std::string longest(2UL * KY_TRACE_CBUFF_TEXT, 'x');
    in_threads(4, [&longest](uint32_t) {
        for (int i = 0; i < 1000; i++) {
            ky_trace_cbuff_log("%s", longest.c_str());
        }
    });
    for (int i = 0; i < KY_TRACE_CBUFF_RECORDS - 1; i++) {
        ky_trace_cbuff_log("record %d\n", i);
    }
    std::istringstream lines(printed(ky_trace_cbuff_dump));
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, std::string(KY_TRACE_CBUFF_TEXT - 1, 'x'));
    for (int i = 0; i < KY_TRACE_CBUFF_RECORDS - 1; i++) {
        std::getline(lines, line);
        ASSERT_EQ(line, "record " + std::to_string(i));
    }
    EXPECT_FALSE(std::getline(lines, line));
}

TEST(KylogTest, PrintsTables)
{
    const uint32_t index = 3;
    const uint64_t count = 5000000000;
    const dbg_utils_column_t columns[] = {
        {"index", 6, DBG_UTILS_KIND_UINT32, &index},
        {"name", 8, DBG_UTILS_KIND_STRING, "PORT"},
        {"bytes", 12, DBG_UTILS_KIND_UINT64, &count},
        {nullptr, 0, DBG_UTILS_KIND_END, nullptr}};
    EXPECT_EQ(
        printed([&columns](FILE* stream) {
            dbg_utils_print_module_header(stream, "Memory");
            dbg_utils_print_table_headline(stream, columns);
            dbg_utils_print_table_data_line(stream, columns);
        }),
        "\nMemory\n"
        "index  name     bytes        \n"
        "3      PORT     5000000000   \n");
}

} // namespace
