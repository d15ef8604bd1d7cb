#include "gen_os_info_host.h"

#include "error_recorder.h"
#include "in_child.h"
#include "probe.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <netdb.h>
#include <sched.h>
#include <unistd.h>

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

std::string address(char const* host) {
    return std::string(gen_get_ip_addr(host));
}

/// A host with these addresses, in hexadecimal.
std::string address_of_host_with(std::string const& addresses) {
    return run_probe({"address"}, {{"FAKED_ADDRESSES", addresses}}).output;
}

} // namespace

TEST(OperatingSystem, NamesByCode) {
    constexpr char const* names[] = {
        "Unknown",    "Windows 95",   "Windows 98",  "Windows 98 SE", "Windows Me",
        "Windows NT", "Windows 2000", "Windows XP",  "Solaris 2.6",   "Solaris 7",
        "Solaris 8",  "Solaris 9",    "HP-UX 10.20", "HP-UX 11.0",    "Linux",
    };
    static_assert(std::size(names) == GEN_OS_LINUX + 1);
    static_assert(GEN_OS_UNKNOWN == 0 && GEN_OS_WIN95 == 1 && GEN_OS_WIN98 == 2 &&
                  GEN_OS_WIN98SE == 3 && GEN_OS_WINME == 4 && GEN_OS_WINNT == 5 &&
                  GEN_OS_WIN2000 == 6 && GEN_OS_WINXP == 7 && GEN_OS_SOLARIS26 == 8 &&
                  GEN_OS_SOLARIS7 == 9 && GEN_OS_SOLARIS8 == 10 && GEN_OS_SOLARIS9 == 11 &&
                  GEN_OS_HPUX1020 == 12 && GEN_OS_HPUX110 == 13 && GEN_OS_LINUX == 14);
    for (int code = 0; code <= GEN_OS_LINUX; ++code)
        EXPECT_EQ(gen_get_operating_system_string(static_cast<GEN_OPERATING_SYSTEM>(code)),
                  names[code])
            << code;
}

TEST(OperatingSystem, CodeOutsideIsUnknown) {
    for (int const code :
         {-1, 15, 100, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_EQ(gen_get_operating_system_string(static_cast<GEN_OPERATING_SYSTEM>(code)),
                  "Unknown")
            << code;
}

TEST(OperatingSystem, IsLinux) {
    EXPECT_EQ(gen_get_operating_system(), GEN_OS_LINUX);
    EXPECT_EQ(gen_get_operating_system_string(), "Linux");
}

TEST(HostName, IsTheSystems) {
    char name[256] = {};
    ASSERT_EQ(gethostname(name, sizeof name), 0);
    ErrorRecorder const recorder;
    EXPECT_EQ(gen_get_host_name(), name);
    EXPECT_THAT(recorder.errors(), IsEmpty());
}

TEST(HostName, FollowsAChange) {
    std::string const longest(64, 'h');
    std::string const seen = in_child([&]() -> std::string {
        if (unshare(CLONE_NEWUTS) != 0 || sethostname(longest.c_str(), longest.size()) != 0)
            return "refused";
        return std::string(gen_get_host_name());
    });
    if (seen == "refused")
        GTEST_SKIP() << "the system gives no host name of one's own";
    EXPECT_EQ(seen, longest);
}

TEST(HostName, FailureIsReportedAndEmpty) {
    ProgramResult const result = run_probe({"host_name"}, {{"FAKED_HOST_NAME", ""}});
    EXPECT_EQ(result.output, "\n");
    EXPECT_THAT(result.errors,
                HasSubstr("gethostname(host_name_buf, buf_size) == 0 (GEN, gen_os_info:288)"));
    EXPECT_EQ(result.status, 0);
}

TEST(HostName, LongerThanTheBufferIsCut) {
    ProgramResult const result =
        run_probe({"host_name"}, {{"FAKED_HOST_NAME", std::string(600, 'h')}});
    EXPECT_EQ(result.output, std::string(512, 'h') + "\n");
    EXPECT_EQ(result.errors, "");
}

TEST(IpAddress, OfANumberIsTheNumber) {
    EXPECT_EQ(address("127.0.0.1"), "127.0.0.1");
    EXPECT_EQ(address("255.254.10.0"), "255.254.10.0");
}

TEST(IpAddress, OfThisMachine) {
    EXPECT_EQ(address("127.0.0.1"), "127.0.0.1");
    if (gethostbyname("localhost") == nullptr)
        GTEST_SKIP() << "this machine does not know itself";
    EXPECT_EQ(address("localhost").substr(0, 4), "127.");
}

TEST(IpAddress, UnknownNameIsEmpty) {
    ErrorRecorder const recorder;
    EXPECT_EQ(address("no.such.host.invalid"), "");
    EXPECT_EQ(address(""), "");
    EXPECT_EQ(address(nullptr), "");
    EXPECT_THAT(recorder.errors(), IsEmpty());
}

TEST(IpAddress, SeveralFollowEachOtherWithoutSeparator) {
    EXPECT_EQ(address_of_host_with("0a000001"), "10.0.0.1\n");
    EXPECT_EQ(address_of_host_with("0a000001,0a000002"), "10.0.0.110.0.0.2\n");
    EXPECT_EQ(address_of_host_with("00000000,ffffffff,7f000001"),
              "0.0.0.0255.255.255.255127.0.0.1\n");
}

TEST(IpAddress, HasAsManyBytesAsTheEntrySays) {
    EXPECT_EQ(address_of_host_with("20010db80000000000000000000000ff"),
              "32.1.13.184.0.0.0.0.0.0.0.0.0.0.0.255\n");
}
