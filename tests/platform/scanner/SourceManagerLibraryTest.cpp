#include "platform/scanner/SourceManagerLibrary.h"

#include <gtest/gtest.h>

namespace velmor::testing {

TEST(SourceManagerLibraryTest, LibrariesWithoutTheEntryPointFailQuietly) {
    CSourceManagerLibrary missing("libthere-is-no-such-library.so");
    EXPECT_EQ(missing.Load(), nullptr);
    CSourceManagerLibrary other("libc.so.6"); // which is there, and scans nothing
    EXPECT_EQ(other.Load(), nullptr);
    other.Unload();
    EXPECT_EQ(other.Load(), nullptr);
}

TEST(SourceManagerLibraryTest, TheEntryPointIsFound) {
    CSourceManagerLibrary library(Path(VELMOR_TEST_SOURCE_MANAGER));
    void* entry = library.Load();
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(library.Load(), entry);
    EXPECT_EQ(reinterpret_cast<int (*)()>(entry)(), 42);
    library.Unload();
    EXPECT_EQ(library.Load(), entry) << "it can be loaded again";
}

} // namespace velmor::testing
