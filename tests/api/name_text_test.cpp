// Names on their way to a library underneath: as they stand at the time of the call, and
// without an allocation for one that was passed before.
#include "api/name_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/api/allocations.h"

namespace zol::testing {
namespace {

using api::NameText;

TEST(NameTextTest, FollowsWhatStandsAtAnAddress) {
    const std::string names[] = {"grade",
                                 "grad",
                                 "",
                                 "a name of more than fifteen characters",
                                 "a name of more than fifteen characterz",
                                 std::string(10'000, 'x'),
                                 "grade"};
    std::vector<char> buffer(20'000);
    for (const std::string& name : names) {
        SCOPED_TRACE(name.substr(0, 40));
        std::strcpy(buffer.data(), name.c_str());
        for (int call = 0; call < 2; ++call) {
            EXPECT_EQ(NameText(buffer.data()).Get(), name);
        }
    }
}

TEST(NameTextTest, StaysWhatItIsWhileTheLibraryCallsBack) {
    char buffer[] = "outer name, longer than fifteen characters";
    const std::string outer_name = buffer;
    const NameText outer(buffer);
    const NameText same(buffer);
    std::strcpy(buffer, "inner");
    {
        const NameText inner(buffer);
        EXPECT_EQ(inner.Get(), "inner");
        EXPECT_EQ(outer.Get(), outer_name);
    }
    const NameText second(buffer);
    EXPECT_EQ(second.Get(), "inner");
    EXPECT_EQ(same.Get(), outer_name);
    EXPECT_EQ(outer.Get(), outer_name);
}

TEST(NameTextTest, IsKeptAgainAfterAnException) {
    const char* const name = "a name of more than fifteen characters";
    EXPECT_THROW(
        {
            const NameText text(name);
            throw std::runtime_error("from the library underneath");
        },
        std::runtime_error);
    const std::size_t before = allocations();
    EXPECT_EQ(NameText(name).Get().size(), std::strlen(name));
    EXPECT_EQ(allocations(), before);
}

TEST(NameTextTest, AllocatesNothingInAWalk) {
    std::array<std::string, 3> names = {"grade of gold in grams", "grade of copper, percent", "au"};
    const auto walk = [&] {
        std::size_t length = 0;
        for (const std::string& name : names) {
            length += NameText(name.c_str()).Get().size();
        }
        return length;
    };
    const std::size_t length = walk();
    const std::size_t before = allocations();
    for (int block = 0; block < 100; ++block) {
        ASSERT_EQ(walk(), length);
    }
    EXPECT_EQ(allocations(), before);
}

}  // namespace
}  // namespace zol::testing
