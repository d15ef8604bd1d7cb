#include "fio_type.h"

#include <gtest/gtest.h>

TEST(FioType, DesignFileTypesHaveDefaultExtensions) {
    struct {
        int type;
        char const* extension;
    } const rows[] = {{8, ".kbd"}, {7, ".ksd"},  {3, ".khd"}, {6, ".vhd"}, {5, ".v"},
                      {14, ".sv"}, {13, ".edf"}, {0, ""},     {-1, ""},    {1000, ""}};
    for (auto const& row : rows)
        EXPECT_STREQ(fio_get_default_extension_string(static_cast<FIO_FILE_TYPE>(row.type)),
                     row.extension)
            << row.type;
}

TEST(FioType, ExtensionsAreAskedForByNumber) {
    struct {
        int type;
        char const* extension;
    } const rows[] = {{96, "krw"}, {63, "kas"}, {68, "kap"}, {-1, ""}, {0, ""}, {1000, ""}};
    for (auto const& row : rows)
        EXPECT_STREQ(fio_get_extension_string(static_cast<FIO_EXTENSION_TYPE>(row.type)),
                     row.extension)
            << row.type;
}
