#include "fio_observer.h"

#include "fio_file_system.h"
#include "fio_find.h"
#include "temp_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

struct Check {
    FIO_FIND const* asker;
    std::string path;
    bool exists;

    bool operator==(Check const&) const = default;
};

std::vector<Check> checks;

bool record(FIO_FIND const* asker, char const* path, bool exists) {
    checks.push_back({asker, path, exists});
    return exists;
}

bool record_and_deny(FIO_FIND const* asker, char const* path, bool exists) {
    record(asker, path, exists);
    return false;
}

class FioObserver : public testing::Test {
  protected:
    void SetUp() override { checks.clear(); }
    void TearDown() override { fio_set_observer(nullptr); }

    TempDirectory m_directory;
    std::string m_one = m_directory.write("one/top.v");
    std::string m_two = m_directory.write("two/top.v");
    FIO_FIND m_find{
        STR((m_directory / "none" + ";" + (m_directory / "one") + ";" + (m_directory / "two"))
                .c_str())};
};

TEST_F(FioObserver, SeesEachExistenceCheck) {
    fio_set_observer(record);
    EXPECT_EQ(std::string(m_find.find_first_relative_path("top.v").fullpath()), m_one);
    EXPECT_TRUE(FIO_FILE_SYSTEM::exists(m_two.c_str()));
    EXPECT_THAT(checks, ElementsAre(Check{&m_find, m_directory / "none/top.v", false},
                                    Check{&m_find, m_one, true}, Check{nullptr, m_two, true}));
}

TEST_F(FioObserver, ItsAnswerIsBelieved) {
    fio_set_observer(record_and_deny);
    EXPECT_EQ(m_find.find_first_relative_path("top.v").fullpath(), "");
    EXPECT_THAT(checks, ElementsAre(Check{&m_find, m_directory / "none/top.v", false},
                                    Check{&m_find, m_one, true}, Check{&m_find, m_two, true}));
}

TEST_F(FioObserver, SeesTheExistenceChecksOfFindAll) {
    fio_set_observer(record);
    MEM_LIST<FIO_PATH> results;
    m_find.find_all("top", {".v", "sv"}, &results, false, true);
    EXPECT_THAT(checks, ElementsAre(Check{&m_find, m_directory / "none/top.v", false},
                                    Check{&m_find, m_directory / "none/top.sv", false},
                                    Check{&m_find, m_one, true},
                                    Check{&m_find, m_directory / "one/top.sv", false}));
}

TEST_F(FioObserver, InstallingGivesThePreviousOne) {
    EXPECT_EQ(fio_set_observer(record), nullptr);
    EXPECT_EQ(fio_set_observer(record_and_deny), record);
    EXPECT_EQ(fio_set_observer(nullptr), record_and_deny);
}

} // namespace
