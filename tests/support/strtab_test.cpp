#include "support/strtab.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

// Values that are numbers, with a tally of those alive; clones fail on demand.
int alive = 0;
bool short_of_memory = false;

void* clone_number(const void* value) {
    if (short_of_memory) {
        return nullptr;
    }
    ++alive;
    return new int(*static_cast<const int*>(value));
}

void destroy_number(void* value) {
    --alive;
    delete static_cast<int*>(value);
}

std::vector<std::string> keys_of(const strtab_t* table, int sorted) {
    std::int32_t count = -1;
    char** const keys = strtab_Keys(table, sorted, &count);
    std::vector<std::string> list(keys, keys + count);
    EXPECT_EQ(keys[count], nullptr);
    strtab_FreeKeys(keys);
    return list;
}

// "Ab" and "BA" have one hash, and so has every row of them.
std::vector<std::string> keys_of_one_hash(std::size_t count) {
    std::vector<std::string> keys;
    for (std::size_t i = 0; i < count; ++i) {
        std::string key;
        for (unsigned bit = 0; bit < 16; ++bit) {
            key += (i >> bit & 1U) != 0 ? "BA" : "Ab";
        }
        keys.push_back(key);
    }
    return keys;
}

class StringTable : public ::testing::Test {
protected:
    StringTable() { strtab_SetCallbacks(table_, clone_number, destroy_number); }
    ~StringTable() override {
        strtab_Free(table_);
        EXPECT_EQ(alive, 0);
        short_of_memory = false;
    }

    bool Set(const std::string& key, int value) {
        return strtab_Set(table_, key.c_str(), &value) == 1;
    }

    strtab_t* table_ = strtab_New();
};

TEST(StringTableOfTexts, KeepsCopiesOfKeysAndValues) {
    strtab_t* const table = strtab_New();
    char key[] = "key";
    char value[] = "value";
    EXPECT_EQ(strtab_Set(table, key, value), 1);
    EXPECT_EQ(strtab_Set(table, "", "empty"), 1);
    EXPECT_EQ(strtab_Set(table, "Key", "other"), 1);
    key[0] = value[0] = '-';
    EXPECT_STREQ(static_cast<char*>(strtab_Get(table, "key")), "value");
    EXPECT_STREQ(static_cast<char*>(strtab_Get(table, "")), "empty");
    EXPECT_STREQ(static_cast<char*>(strtab_Get(table, "Key")), "other");
    EXPECT_EQ(strtab_Get(table, "KEY"), nullptr);
    // A value may be set anew from itself.
    EXPECT_EQ(strtab_Set(table, "key", strtab_Get(table, "key")), 1);
    EXPECT_STREQ(static_cast<char*>(strtab_Get(table, "key")), "value");
    strtab_Free(table);
}

TEST_F(StringTable, HashesBytesAsSignedOnes) {
    // With fewer buckets than 512 the sign doesn't show.
    for (const std::string& key : keys_of_one_hash(300)) {
        Set(key, 0);
    }
    ASSERT_EQ(table_->mask, 511U);
    const struct {
        std::string key;
        std::uint32_t hash;
    } rows[] = {{"", 0},
                {"a", 97},
                {"ab", 97 * 33 + 98},
                {"\xff", 0xffffffffU},
                {"a\xc3\xa4", ((97 * 33 - 61) * 33) - 92}};
    for (const auto& [key, hash] : rows) {
        Set(key, 1);
        EXPECT_EQ(static_cast<std::uint32_t>(strtab_Find(table_, key.c_str()).bucket), hash & 511U);
    }
}

TEST_F(StringTable, GrowsOnlyWhenOneBucketHoldsMoreEntriesThanThereAreBuckets) {
    const std::vector<std::string> keys = keys_of_one_hash(20);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(table_->mask, i <= 8 ? 7U : (i <= 16 ? 15U : 31U)) << "before key " << i;
        Set(keys[i], static_cast<int>(i));
    }
    EXPECT_EQ(table_->buckets->count, 32);
    EXPECT_EQ(keys_of(table_, 0), keys);
    EXPECT_EQ(*static_cast<int*>(strtab_Get(table_, keys[13].c_str())), 13);
}

TEST_F(StringTable, SplitsABucketInOrder) {
    // Buckets of 8: all in 1; of 16: "1" and "A" stay ('1' = 49, 'A' = 65), "9" and "I" go.
    for (const char* key : {"9", "1", "I", "A", "Y", "Q", "a", "i"}) {
        Set(key, 1);
    }
    EXPECT_EQ(table_->mask, 7U);
    Set("q", 1);
    EXPECT_EQ(table_->mask, 15U);
    EXPECT_EQ(keys_of(table_, 0),
              (std::vector<std::string>{"1", "A", "Q", "a", "q", "9", "I", "Y", "i"}));
    EXPECT_EQ(keys_of(table_, 1),
              (std::vector<std::string>{"1", "9", "A", "I", "Q", "Y", "a", "i", "q"}));
}

TEST_F(StringTable, StepsThroughItsEntriesAndEndsPastThem) {
    EXPECT_EQ(strtab_Begin(table_).bucket, -1);
    EXPECT_EQ(keys_of(table_, 1), std::vector<std::string>());
    for (const char* key : {"9", "1", "b"}) {
        Set(key, key[0]);
    }
    strtab_iter place = strtab_Begin(table_);
    EXPECT_STREQ(place.key, "9");
    EXPECT_TRUE(strtab_Next(&place));
    EXPECT_STREQ(place.key, "1");
    EXPECT_EQ(place.index, 1U);
    EXPECT_EQ(place.bucket, 1);
    place = strtab_Find(table_, "b");
    EXPECT_EQ(*static_cast<int*>(place.value), 'b');
    EXPECT_FALSE(strtab_Next(&place));
    EXPECT_EQ(place.bucket, -1);
    EXPECT_FALSE(strtab_Next(&place));
    EXPECT_EQ(strtab_Find(table_, "c").bucket, -1);
}

TEST_F(StringTable, CopiesInFullAndInOrder) {
    const std::vector<std::string> keys = keys_of_one_hash(40);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        Set(keys[i], static_cast<int>(i));
    }
    strtab_t* const copy = strtab_Clone(table_);
    EXPECT_EQ(copy->mask, table_->mask);
    strtab_Remove(table_, keys[0].c_str());
    EXPECT_EQ(keys_of(copy, 0), keys);
    EXPECT_EQ(*static_cast<int*>(strtab_Get(copy, keys[39].c_str())), 39);
    EXPECT_EQ(alive, 79);
    short_of_memory = true;
    EXPECT_EQ(strtab_Clone(copy), nullptr);
    strtab_Free(copy);
    EXPECT_EQ(strtab_Clone(nullptr), nullptr);
    EXPECT_EQ(alive, 39);
}

TEST_F(StringTable, LosesNothingWhenAValueCannotBeCopied) {
    Set("a", 1);
    short_of_memory = true;
    EXPECT_FALSE(Set("a", 2));
    EXPECT_FALSE(Set("b", 2));
    EXPECT_EQ(strtab_Count(table_), 1);
    EXPECT_EQ(*static_cast<int*>(strtab_Get(table_, "a")), 1);
}

TEST_F(StringTable, BehavesAsAMapUnderRandomOperations) {
    std::mt19937 random(11);
    std::map<std::string, int> model;
    const std::vector<std::string> alike = keys_of_one_hash(300);
    for (int step = 0; step < 30'000; ++step) {
        std::string key = alike[random() % alike.size()];
        if (random() % 2 == 0) {
            key.clear();
            for (std::size_t length = random() % 4; length > 0; --length) {
                key += "ab\xff"[random() % 3];
            }
        }
        if (random() % 3 == 0) {
            strtab_Remove(table_, key.c_str());
            model.erase(key);
        } else {
            ASSERT_TRUE(Set(key, step));
            model[key] = step;
        }
        const auto* const value = static_cast<int*>(strtab_Get(table_, key.c_str()));
        ASSERT_EQ(value != nullptr, model.count(key) == 1);
        ASSERT_TRUE(value == nullptr || *value == model[key]);
        ASSERT_EQ(alive, static_cast<int>(model.size()));
        if (step % 100 == 0) {
            std::vector<std::string> keys;
            for (const auto& entry : model) {
                keys.push_back(entry.first);
            }
            ASSERT_EQ(keys_of(table_, 1), keys);
            std::map<std::string, int> walked;
            for (strtab_iter at = strtab_Begin(table_); at.bucket >= 0; strtab_Next(&at)) {
                walked[at.key] = *static_cast<int*>(at.value);
            }
            ASSERT_EQ(walked, model);
            ASSERT_EQ(strtab_Count(table_), static_cast<std::int32_t>(model.size()));
        }
    }
    EXPECT_GT(table_->mask, 7U);
}

}  // namespace
