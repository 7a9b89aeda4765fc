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

#define EXPECT_RECORDS(...) EXPECT_EQ(take_records(), (__VA_ARGS__))
#define EXPECT_SILENCE() EXPECT_EQ(take_records(), Records{})

/* The two records of one statement. */
Records statement(
    uint32_t mask, const std::string& module, const std::string& file, const std::string& function,
    const std::string& text);

Records operator+(Records a, const Records& b);

/* FNV-1a over texts, each with its end, as hexadecimal text: what guards a table that is not worth
 * a second copy. */
class Fingerprint {
  public:
    void add(const char* text);
    std::string text() const;

  private:
    uint64_t hash_ = 0xcbf29ce484222325;
};

/* Every test starts and ends silent, with the default verbosity and without traces. */
class RecordedTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;
};

#endif
