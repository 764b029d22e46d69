// What the cached file layer asks of the system, and what it makes of the answers.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "support/file.h"
#include "support/read_cache.h"
#include "tests/support/scripted_os.h"

namespace zol::testing {
namespace {

constexpr std::uint32_t kCapacity = 81920;

using Counts = std::vector<std::uint32_t>;

/// No two places within 64 KB look the same.
std::string numbered_bytes(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<char>(i % 2 == 0 ? i / 2 % 251 : i / 502 % 256);
    }
    return bytes;
}

file_handle open_for_reading() {
    return file_Open("data", GENERIC_READ, OPEN_EXISTING);
}

std::string read(file_handle handle, std::uint32_t count) {
    std::string bytes(count, '?');
    bytes.resize(file_Read(handle, bytes.data(), count));
    return bytes;
}

class ReadCacheTest : public ::testing::Test {
protected:
    ReadCacheTest() {
        os_script = {};
        os_script.content = numbered_bytes(200000);
        handle_ = open_for_reading();
    }

    ~ReadCacheTest() override { file_Close(handle_); }

    /// What the file holds there.
    static std::string Content(std::size_t place, std::size_t count) {
        return os_script.content.substr(place, count);
    }

    file_handle handle_;
};

TEST_F(ReadCacheTest, SmallReadsShareOneSystemReadAndASeekCostsAnother) {
    EXPECT_EQ(read(handle_, 10), Content(0, 10));
    EXPECT_EQ(read(handle_, 10), Content(10, 10));
    EXPECT_EQ(os_script.reads, (Counts{kCapacity}));
    EXPECT_TRUE(file_Seek(handle_, 20, 0));
    EXPECT_EQ(read(handle_, 10), Content(20, 10));
    EXPECT_EQ(os_script.reads, (Counts{kCapacity, kCapacity}));
}

TEST_F(ReadCacheTest, AFirstReadAsLargeAsTheBufferGoesPastTheCache) {
    struct Row {
        std::uint32_t first;
        Counts asked;
    };
    for (const Row& row : {Row{kCapacity - 1, {kCapacity}}, Row{kCapacity, {kCapacity, 5}},
                           Row{kCapacity + 1, {kCapacity + 1, 5}}}) {
        SCOPED_TRACE(row.first);
        file_Close(handle_);
        handle_ = open_for_reading();
        os_script.reads.clear();
        EXPECT_EQ(read(handle_, row.first), Content(0, row.first));
        const std::uint32_t rest = row.first < kCapacity ? 1 : 5;
        EXPECT_EQ(read(handle_, rest), Content(row.first, rest));
        EXPECT_EQ(os_script.reads, row.asked) << "without a slot, small reads go past it too";
    }
}

TEST_F(ReadCacheTest, AFileWithoutASlotGetsOneAfterAnotherFileOrASeek) {
    read(handle_, kCapacity);
    const file_handle other = open_for_reading();
    read(other, 1);
    os_script.reads.clear();
    EXPECT_EQ(read(handle_, 3), Content(kCapacity, 3));
    EXPECT_EQ(os_script.reads, (Counts{kCapacity}));
    file_Seek(other, 0, 0);
    read(other, kCapacity);
    file_Seek(other, 0, 0);
    os_script.reads.clear();
    read(other, 3);
    EXPECT_EQ(os_script.reads, (Counts{kCapacity}));
    file_Close(other);
}

TEST_F(ReadCacheTest, TellCountsWhatWasDeliveredAndSeekFromTheCurrentPositionWhatWasFetched) {
    read(handle_, 10);
    EXPECT_EQ(file_Tell(handle_), 10);
    EXPECT_TRUE(file_Seek(handle_, 5, 1));
    EXPECT_EQ(file_Tell(handle_), kCapacity + 5);
    EXPECT_TRUE(file_Seek(handle_, -7, 2));
    EXPECT_EQ(file_Tell(handle_), 200000 - 7);
    EXPECT_EQ(read(handle_, 100).size(), 7U);
}

TEST_F(ReadCacheTest, AFailedSeekStillDropsWhatIsCached) {
    for (const int origin : {0, 3, -1}) {
        SCOPED_TRACE(origin);
        file_Seek(handle_, 0, 0);
        read(handle_, 10);
        EXPECT_FALSE(file_Seek(handle_, -1, origin));
        EXPECT_EQ(file_Tell(handle_), kCapacity);
    }
}

TEST_F(ReadCacheTest, TheEndOfTheFileIsKeptUntilASeek) {
    struct Row {
        const char* name;
        std::deque<std::optional<std::uint32_t>> limits;
        std::size_t delivered;
    };
    for (const Row& row : {Row{"the file ends", {}, 20}, Row{"a read fails", {8, std::nullopt}, 8},
                           Row{"the first read fails", {std::nullopt}, 0}}) {
        SCOPED_TRACE(row.name);
        os_script.content = numbered_bytes(20);
        os_script.read_limits = row.limits;
        file_Seek(handle_, 0, 0);
        EXPECT_EQ(read(handle_, 100).size(), row.delivered);
        os_script.content = numbered_bytes(50);
        EXPECT_EQ(read(handle_, 1), "") << "although there is more by now";
        const std::int64_t place = file_Tell(handle_);
        EXPECT_EQ(place, static_cast<std::int64_t>(row.delivered));
        EXPECT_TRUE(file_Seek(handle_, place, 0));
        EXPECT_EQ(read(handle_, 100), Content(row.delivered, 50));
    }
}

TEST_F(ReadCacheTest, AReadOfNothingAsksNothing) {
    EXPECT_EQ(read(handle_, 0), "");
    EXPECT_EQ(file_Read(handle_, nullptr, 5), 0U);
    EXPECT_TRUE(os_script.reads.empty());
}

TEST_F(ReadCacheTest, ManyFilesReadInTurnsKeepTheirOwnPlaces) {
    std::vector<file_handle> handles;
    for (std::uint32_t i = 0; i < 25; ++i) {
        handles.push_back(open_for_reading());
        EXPECT_EQ(read(handles.back(), i), Content(0, i));
    }
    os_script.reads.clear();
    for (std::uint32_t i = 0; i < 25; ++i) {
        EXPECT_EQ(read(handles[i], 4), Content(i, 4));
        EXPECT_EQ(file_Tell(handles[i]), i + 4);
    }
    EXPECT_EQ(os_script.reads, (Counts{kCapacity})) << "only the first has read nothing before";
    for (const file_handle handle : handles) {
        file_Close(handle);
    }
}

TEST_F(ReadCacheTest, AHandleThatIsGivenOutAgainStartsAfresh) {
    read(handle_, 10);
    const file_handle before = handle_;
    file_Close(handle_);
    EXPECT_EQ(read(before, 10), "") << "of a closed handle";
    handle_ = open_for_reading();
    ASSERT_EQ(handle_, before);
    EXPECT_EQ(read(handle_, 10), Content(0, 10));
}

TEST_F(ReadCacheTest, OnlyFilesThatAreNotAtTheirEndHoldABuffer) {
    support::ReadCache cache;
    std::string bytes(os_script.content.size(), '?');
    const auto read_here = [&](file_handle file, std::uint32_t count) {
        return cache.Read(file, bytes.data(), count);
    };
    EXPECT_EQ(read_here(handle_, 10), 10U);
    EXPECT_EQ(cache.NBuffers(), 1U);
    const file_handle closed = open_for_reading();
    file_Close(closed);
    for (file_handle file = closed; file < closed + 100; ++file) {
        EXPECT_EQ(read_here(file, 10), 0U);
    }
    EXPECT_EQ(cache.NBuffers(), 1U);
    EXPECT_EQ(read_here(handle_, kCapacity), kCapacity);
    EXPECT_EQ(read_here(handle_, kCapacity), kCapacity);
    EXPECT_EQ(cache.NBuffers(), 1U);
    EXPECT_EQ(read_here(handle_, kCapacity), 200000U - 10U - 2 * kCapacity);
    EXPECT_EQ(cache.NBuffers(), 0U);
    EXPECT_EQ(read_here(handle_, 1), 0U);
    EXPECT_EQ(cache.NUnread(handle_), 0U);
}

TEST_F(ReadCacheTest, RandomReadsAndSeeksDeliverWhatTheFileHolds) {
    std::mt19937 random(20240607);
    const auto below = [&](std::uint32_t limit) {
        return static_cast<std::uint32_t>(random() % limit);
    };
    std::vector<file_handle> handles = {handle_, open_for_reading(), open_for_reading()};
    std::vector<std::size_t> places(handles.size(), 0);
    for (int step = 0; step < 3000; ++step) {
        SCOPED_TRACE(step);
        const std::size_t which = below(3);
        if (below(8) == 0) {
            places[which] = below(200000);
            ASSERT_TRUE(file_Seek(handles[which], static_cast<std::int64_t>(places[which]), 0));
        }
        os_script.read_limits.clear();
        if (below(3) == 0) {
            os_script.read_limits = {1 + below(50), 1 + below(5000)};
        }
        const std::uint32_t count = below(4) == 0 ? below(2 * kCapacity) : below(300);
        const std::string got = read(handles[which], count);
        ASSERT_EQ(got, Content(places[which], got.size()));
        places[which] += got.size();
        ASSERT_EQ(file_Tell(handles[which]), static_cast<std::int64_t>(places[which]));
        // A slot joins short reads; past the cache they are handed on.
        const bool is_past_cache = os_script.reads.back() != kCapacity;
        ASSERT_TRUE(got.size() == count || places[which] == 200000 || is_past_cache);
    }
    file_Close(handles[1]);
    file_Close(handles[2]);
}

}  // namespace
}  // namespace zol::testing
