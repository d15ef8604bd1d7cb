#include "mem.h"
#include "stl.h"

#include <gtest/gtest.h>

namespace {

std::string received_owner;
std::string received_text;

int receive(char const* owner, char const* text) {
    received_owner = owner;
    received_text = text;
    return 42;
}

// Installs `receive` until the end of the scope.
class SinkInForce {
  public:
    SinkInForce() : m_previous(mem_msg_set_sink(receive)) {}
    ~SinkInForce() { mem_msg_set_sink(m_previous); }
    SinkInForce(SinkInForce const&) = delete;
    SinkInForce& operator=(SinkInForce const&) = delete;

  private:
    MEM_MSG_SINK m_previous;
};

int message(char const* owner, char const* format, ...) {
    std::string tag = owner != nullptr ? owner : "";
    va_list args;
    va_start(args, format);
    int const result =
        mem_msg_local_vdebug(owner != nullptr ? tag.data() : nullptr, format, STL_ARGS(args));
    va_end(args);
    return result;
}

} // namespace

TEST(MemMsg, SinkGetsOwnerAndTextAndItsResultComesBack) {
    SinkInForce const sink;
    EXPECT_EQ(message("GEN", "%s has %d of %ld", "it", 3, 7L), 42);
    EXPECT_EQ(received_owner, "GEN");
    EXPECT_EQ(received_text, "it has 3 of 7");
}

TEST(MemMsg, LongTextArrivesWhole) {
    SinkInForce const sink;
    std::string const text(100000, 'x');
    message("GEN", "<%s>", text.c_str());
    EXPECT_EQ(received_text, "<" + text + ">");
}

TEST(MemMsg, NullArgumentsPrintNothing) {
    SinkInForce const sink;
    char owner[] = "GEN";
    EXPECT_EQ(mem_msg_local_vdebug(owner, "100%% of %s and %5.2f.", nullptr), 42);
    EXPECT_EQ(received_text, "100% of  and .");
}

TEST(MemMsg, NullOwnerAndFormatAreEmpty) {
    SinkInForce const sink;
    received_owner = received_text = "?";
    EXPECT_EQ(message(nullptr, nullptr), 42);
    EXPECT_EQ(received_owner, "");
    EXPECT_EQ(received_text, "");
}

TEST(MemMsg, InstallingGivesThePreviousSink) {
    EXPECT_EQ(mem_msg_set_sink(receive), nullptr);
    EXPECT_EQ(mem_msg_set_sink(nullptr), receive);
    EXPECT_EQ(mem_msg_set_sink(nullptr), nullptr);
}

TEST(MemMsg, DefaultWritesOneLineToStandardErrorAndCountsIt) {
    testing::internal::CaptureStderr();
    int const length = message("GEN", "loaded %d", 12);
    std::string const line = testing::internal::GetCapturedStderr();
    EXPECT_EQ(line, "GEN: loaded 12\n");
    EXPECT_EQ(length, static_cast<int>(line.size()));
}
