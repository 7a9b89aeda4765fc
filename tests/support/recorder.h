/* A logging library that remembers: linked into a test, it stands in front of the real one. */
#ifndef RECORDER_H
#define RECORDER_H

#include <ky_common.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

constexpr ky_status_t GOOD = KY_STATUS_SUCCESS;
constexpr ky_status_t BAD = KY_STATUS_PARAM_ERROR;
constexpr ky_status_t RANGE = KY_STATUS_PARAM_EXCEEDS_RANGE;
constexpr ky_status_t NIL = KY_STATUS_PARAM_NULL;
constexpr ky_status_t MISSING = KY_STATUS_ENTRY_NOT_FOUND;
constexpr ky_status_t PRESENT = KY_STATUS_ENTRY_ALREADY_EXISTS;

/* Records in the order they were written, each as one text: "log MASK MODULE: text" for ky_log and
 * "trace: text" for ky_trace_cbuff_log. The line number of a prefix reads "L", in both records of a
 * statement the same one. */
using Records = std::vector<std::string>;

/* What has been recorded since the last call. */
Records take_records();

#define EXPECT_RECORDS(...) EXPECT_EQ(take_records(), (__VA_ARGS__))
#define EXPECT_SILENCE() EXPECT_EQ(take_records(), Records{})

/* What a call returns, and what it records meanwhile: EXPECT_OUTCOME(call, status, records). */
using Outcome = std::pair<uint32_t, Records>;
#define EXPECT_OUTCOME(call, ...) EXPECT_EQ((Outcome{call, take_records()}), (Outcome{__VA_ARGS__}))

/* A call in a row of a table: its text, and a function that makes it. */
#define CALL(call) #call, [&] { return call; }
using Call = std::function<ky_status_t()>;

/* A module and its source, as records name them. */
class Module {
  public:
    constexpr Module(const char* name, const char* file) : name_(name), file_(file) {}

    /* The two records of one statement. */
    Records said(uint32_t mask, const std::string& function, const std::string& text) const;
    Records entered(const std::string& function) const;
    Records left(const std::string& function) const;
    Records around(const std::string& function, const Records& within = {}) const;

  private:
    const char* name_;
    const char* file_;
};

Records operator+(Records a, const Records& b);

/* FNV-1a over texts, each with its end: what guards a table that is not worth a second copy. */
class Fingerprint {
  public:
    void add(const char* text);
    uint64_t value() const
    {
        return value_;
    }

  private:
    uint64_t value_ = 0xcbf29ce484222325;
};

/* Every test starts and ends silent, with the default verbosity and without traces. */
class RecordedTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;
};

#endif
