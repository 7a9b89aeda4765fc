// The stand-in for the logging library.
#include "tools.h"

#include <kylog/kylog.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

namespace {

TEST(KylogTest, WritesALineAMessageAtOnce)
{
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_DGRAM, 0, ends), 0);
    const int standard_error = dup(STDERR_FILENO);
    dup2(ends[0], STDERR_FILENO);
    ky_log(1, "UTILS", "Device ID (%u)\n", 254U);
    ky_log(7, "ADVISER", "no newline %s", "here");
    ky_log(2, "X", "\n");
    ky_log(15, "LONG", "%s\n", std::string(5000, 'x').c_str());
    dup2(standard_error, STDERR_FILENO);
    for (const std::string& expected :
         {std::string("ERROR   UTILS: Device ID (254)\n"),
          std::string("NOTICE  ADVISER: no newline here\n"), std::string("UNKNOWN X: \n"),
          "INFO    LONG: " + std::string(4081, 'x') + "\n"}) {
        char text[8192]; // written by one call
        const ssize_t size = recv(ends[1], text, sizeof text, MSG_DONTWAIT);
        EXPECT_EQ(std::string(text, size < 0 ? 0 : static_cast<size_t>(size)), expected);
    }
}

TEST(KylogTest, TraceBufferKeepsTheNewestRecordsOfManyThreads)
{
    const std::string longest(2UL * KY_TRACE_CBUFF_TEXT, 'x');
    in_threads(4, [&longest](uint32_t) {
        for (int i = 0; i < 1000; i++) {
            ky_trace_cbuff_log("%s", longest.c_str());
        }
    });
    std::string expected = longest.substr(0, KY_TRACE_CBUFF_TEXT - 1) + "\n";
    for (int i = 0; i < KY_TRACE_CBUFF_RECORDS - 1; i++) {
        ky_trace_cbuff_log("record %d\n", i);
        expected += "record " + std::to_string(i) + "\n";
    }
    char* text = nullptr;
    size_t size = 0;
    FILE* stream = open_memstream(&text, &size);
    ky_trace_cbuff_dump(stream);
    fclose(stream);
    EXPECT_EQ(text, expected);
    free(text);
}

} // namespace
