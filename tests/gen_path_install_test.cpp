#include "gen_path_install.h"

#include "error_recorder.h"
#include "gen_path_fixture.h"
#include "lookup_order.h"

#include <climits>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class GenInstallation : public GenPathTest {};

} // namespace

TEST_F(GenInstallation, LibraryDirectoriesLieBelowTheRoot) {
    ASSERT_EQ(GEN_LIB_SIZE, 29);
    for (int type = 0; type < 29; ++type)
        EXPECT_EQ(gen_get_library_path(static_cast<GEN_LIBRARY_TYPE>(type)),
                  text_at("korvane/") + library_directories[type].name)
            << type;
}

TEST_F(GenInstallation, LibraryTypesKeepTheirNumbers) {
    EXPECT_EQ(GEN_LIB_ROOT, 0);
    EXPECT_EQ(GEN_LIB_PARA_ARITHMETIC, 10);
    EXPECT_EQ(GEN_LIB_VITAL, 19);
    EXPECT_EQ(GEN_LIB_EDA_MENTOR, 20);
    EXPECT_EQ(GEN_LIB_SYNPLICITY, 25);
    EXPECT_EQ(GEN_LIB_EDA_HSPICE, 28);
}

TEST_F(GenInstallation, LibraryPastTheTableIsReportedAndGivesTheRoot) {
    for (int type : {29, 30, 1000, INT_MAX}) {
        ErrorRecorder recorder;
        EXPECT_EQ(gen_get_library_path(static_cast<GEN_LIBRARY_TYPE>(type)), text_at("korvane/"));
        ASSERT_EQ(recorder.errors().size(), 1U);
        EXPECT_EQ(recorder.errors()[0].condition, "type < GEN_LIB_SIZE");
        EXPECT_EQ(recorder.errors()[0].owner, "GEN");
        EXPECT_EQ(recorder.errors()[0].source_file, "gen_path");
        EXPECT_GT(recorder.errors()[0].line, 0);
    }
}

TEST_F(GenInstallation, RootComesBeforeTheReport) {
    auto const past_the_table = [] {
        gen_module_fullpath = nullptr;
        gen_get_library_path(GEN_LIB_SIZE);
    };
    EXPECT_EXIT(past_the_table(), testing::ExitedWithCode(255),
                AllOf(HasSubstr("was not properly initialized"), Not(HasSubstr("GEN_LIB_SIZE"))));
}

TEST_F(GenInstallation, NegativeLibraryGivesTheRootUnreported) {
    ErrorRecorder recorder;
    EXPECT_EQ(gen_get_library_path(static_cast<GEN_LIBRARY_TYPE>(-1)), text_at("korvane/"));
    EXPECT_EQ(gen_get_library_path(static_cast<GEN_LIBRARY_TYPE>(INT_MIN)), text_at("korvane/"));
    EXPECT_THAT(recorder.errors(), IsEmpty());
}

TEST_F(GenInstallation, OnlyTypes19To25AreForOutsideTools) {
    for (int type = -10; type < 40; ++type)
        EXPECT_EQ(gen_lib_is_for_eda_use_only(static_cast<GEN_LIBRARY_TYPE>(type)),
                  type >= 19 && type <= 25)
            << type;
    EXPECT_FALSE(gen_lib_is_for_eda_use_only(static_cast<GEN_LIBRARY_TYPE>(INT_MIN)));
    EXPECT_FALSE(gen_lib_is_for_eda_use_only(static_cast<GEN_LIBRARY_TYPE>(INT_MAX)));
}

TEST_F(GenInstallation, DataDirectoriesLieBelowTheRoot) {
    EXPECT_EQ(gen_get_common_data_fullpath(), text_at("korvane/common"));
    EXPECT_EQ(gen_get_common_misc_fullpath(), text_at("korvane/common/misc/"));
    EXPECT_EQ(gen_get_unshipped_data_fullpath(), text_at("korvane/common/not_shipped/"));
    EXPECT_EQ(gen_get_tcl_apps_fullpath(), text_at("korvane/common/tcl/apps/"));
    EXPECT_EQ(gen_get_tcl_internal_fullpath(), text_at("korvane/common/tcl/internal/"));
    EXPECT_EQ(gen_get_unshipped_tcl_fullpath(), text_at("korvane/common/not_shipped/tcl/"));
    EXPECT_EQ(gen_get_device_db_fullpath(), text_at("korvane/common/devinfo"));
    EXPECT_EQ(gen_get_device_db_name(), "devinfo");
}

TEST_F(GenInstallation, NothingIsCached) {
    EXPECT_EQ(gen_get_common_data_fullpath(), text_at("korvane/common"));
    std::string elsewhere = "/opt/k/linux/tool";
    char* const previous = std::exchange(gen_module_fullpath, elsewhere.data());
    EXPECT_EQ(gen_get_common_data_fullpath(), "/opt/k/common");
    EXPECT_EQ(gen_get_device_db_fullpath(), "/opt/k/common/devinfo");
    EXPECT_EQ(gen_get_library_path(GEN_LIB_VHDL), "/opt/k/libraries/vhdl/");
    gen_module_fullpath = previous;
}

TEST_F(GenInstallation, DeviceFilesAreTheOnesBesideTheExecutable) {
    EXPECT_THAT(gen_get_all_device_files(), IsEmpty());
    write("korvane/linux/prismo2.ddb");
    write("korvane/linux/ally.ddb");
    write("korvane/linux/ally.ddb.old");
    write("korvane/common/devinfo/other.ddb");
    EXPECT_THAT(gen_get_all_device_files(), ElementsAre("ally.ddb", "prismo2.ddb"));
}

TEST_F(GenInstallation, ExecutableWithoutADirectoryHasNoDeviceFiles) {
    write("here/ally.ddb");
    std::string bare = "tool";
    char* const previous = std::exchange(gen_module_fullpath, bare.data());
    EXPECT_THAT(gen_get_all_device_files(), IsEmpty());
    gen_module_fullpath = previous;
}
