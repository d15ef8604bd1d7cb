#include "lookup_watch.h"

#include "temp_directory.h"

#include <gtest/gtest.h>

namespace {

bool deny(FIO_FIND const* /*asker*/, char const* /*path*/, bool /*exists*/) {
    return false;
}

} // namespace

TEST(LookupWatch, BelievesTheObserverBeforeIt) {
    TempDirectory const directory;
    directory.write("top.v");
    FIO_FIND find(STR(directory.path().c_str()));
    for (FIO_OBSERVER const observer : {FIO_OBSERVER(nullptr), FIO_OBSERVER(deny)}) {
        fio_set_observer(observer);
        LookupWatch watch(LookupWatch::Manner::listen, "other");
        EXPECT_EQ(find.find_first_relative_path("top.v").empty(), observer != nullptr);
        MEM_VECTOR<ExistenceCheck> const checks = watch.take();
        ASSERT_EQ(checks.size(), 1U);
        EXPECT_EQ(checks[0].there, observer == nullptr);
    }
    EXPECT_EQ(fio_set_observer(nullptr), FIO_OBSERVER(deny)); // there again behind the watch
}
