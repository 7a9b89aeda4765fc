/* A logging library that remembers: linked into a test, it stands in front of the real one. */
#ifndef RECORDER_H
#define RECORDER_H

#include <ky_common.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

/* Records in the order they were written, each as one text: "log MASK MODULE: text" for ky_log and
 * "trace: text" for ky_trace_cbuff_log. The line number of a prefix reads "L", in both records of a
 * statement the same one. */
using Records = std::vector<std::string>;

/* What has been recorded since the last call. */
Records take_records();

/* The two records of one statement. */
Records statement(
    uint32_t mask, const std::string& module, const std::string& file, const std::string& function,
    const std::string& text);

Records operator+(Records a, const Records& b);

/* Every test starts and ends silent, with the default verbosity and without traces. */
class RecordedTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;
};

#endif
