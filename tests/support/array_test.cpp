#include "support/array.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

// A request that can't be met is refused, with sanitizers too.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" [[gnu::visibility("default")]] const char* __asan_default_options();
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}

namespace {

constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

template <typename Call>
std::string said_by(Call call) {
    ::testing::internal::CaptureStderr();
    call();
    return ::testing::internal::GetCapturedStderr();
}

// A sanitizer has words of its own about such a request.
bool ends_with(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// What the callbacks were given, in order.
std::vector<std::string> journal;

template <char name>
void note(void* element) {
    journal.push_back(std::string(1, name) + std::to_string(*static_cast<int*>(element)));
}

void copy_doubled(void* slot, const void* source) {
    *static_cast<int*>(slot) = *static_cast<const int*>(source) * 2;
}

class Array : public ::testing::Test {
protected:
    ~Array() override { array_Free(array_); }

    void Fill(int count) {
        for (int i = 0; i < count; ++i) {
            array_AddCopy(array_, &i);
        }
        journal.clear();
    }

    std::vector<int> Values() const {
        std::vector<int> values;
        for (int i = 0; i < array_Count(array_); ++i) {
            values.push_back(*static_cast<int*>(array_Nth(array_, i)));
        }
        return values;
    }

    // What the record promises of itself.
    void ExpectSound() const {
        ASSERT_TRUE(array_->data == nullptr ? array_->capacity == 0
                                            : array_->capacity > array_->count);
        const auto* bytes = static_cast<const unsigned char*>(array_->data);
        for (std::size_t i = static_cast<std::size_t>(array_->count) * array_->elementSize;
             i < static_cast<std::size_t>(array_->capacity) * array_->elementSize; ++i) {
            ASSERT_EQ(bytes[i], 0) << "byte " << i << " that is not in use";
        }
    }

    array_t* array_ = array_New(sizeof(int));
};

TEST_F(Array, GrowsBySteps) {
    array_t* const array = array_New(16);
    array_Add(array);
    EXPECT_EQ(array->capacity, 12);
    EXPECT_EQ(array->grain, 20);
    array_Add(array);
    EXPECT_EQ(array->capacity, 12);
    EXPECT_EQ(array_SetCount(array, 12), 1);
    EXPECT_EQ(array->capacity, 33);
    EXPECT_EQ(array->grain, 40);
    // A big jump: to the size itself, and half of it as the next step.
    EXPECT_EQ(array_Resize(array, 1000), 1);
    EXPECT_EQ(array->capacity, 1001);
    EXPECT_EQ(array->grain, 500);
    EXPECT_EQ(array->count, 12);
    EXPECT_EQ(array_Touch(array, 1000), 1);
    EXPECT_EQ(array->capacity, 1502);
    EXPECT_EQ(array->count, 1001);
    EXPECT_EQ(array_Resize(array, -1), 1);
    EXPECT_EQ(array->capacity, 0);
    EXPECT_EQ(array->data, nullptr);
    EXPECT_EQ(array->grain, 1000);
    array_Free(array);
}

TEST_F(Array, CutsAStepBackByItsLow32Bits) {
    const struct {
        std::uint32_t size;
        std::int32_t grain, next;
    } rows[] = {
        {4, 25'000'000, 50'000'000},  // 200000000 bytes
        {8, 12'500'001, 25'000'000},  // 200000016
        {1, 100'000'001, 200'000'000},
        {3000, 33'334, 66'666},
        {200'000'001, 3, 0},
        // The product wraps to a small number, to a negative one.
        {429'496'730, 5, 10},
        {536'870'912, 3, 6},
        {0, 10, 20},
    };
    for (const auto& [size, grain, next] : rows) {
        SCOPED_TRACE(std::to_string(size) + " x " + std::to_string(grain));
        array_t* const array = array_New(size);
        array->grain = grain;
        // A refusal moves the grain all the same.
        said_by([&] { array_Resize(array, 1); });
        EXPECT_EQ(array->grain, next);
        array_Free(array);
    }
}

TEST_F(Array, RefusesWhatCannotBeHadAndStaysAsItWas) {
    array_t* const wide = array_New(std::numeric_limits<std::uint32_t>::max());
    EXPECT_PRED2(ends_with, said_by([&] { EXPECT_EQ(array_Resize(wide, kMost - 1), 0); }),
                 "Array resize failed for 2147483647 x -1.\n");
    EXPECT_EQ(wide->grain, 1'073'741'823);
    EXPECT_PRED2(ends_with, said_by([&] { EXPECT_EQ(array_Resize(wide, kMost), 0); }),
                 "Array resize failed for -2147483648 x -1.\n");
    EXPECT_PRED2(ends_with, said_by([&] { EXPECT_EQ(array_Touch(wide, kMost), 0); }),
                 "Array resize failed for -2147483647 x -1.\n");
    EXPECT_PRED2(ends_with, said_by([&] { EXPECT_EQ(array_SetCount(wide, kMost), 1); }),
                 "Array resize failed for -2147483648 x -1.\n");
    EXPECT_EQ(wide->count, 0);
    // The count of an addition stays raised; what has no storage can't be reached.
    EXPECT_PRED2(ends_with, said_by([&] {
                     wide->grain = kMost - 2;
                     EXPECT_EQ(array_Add(wide), nullptr);
                 }),
                 "Array resize failed for 2147483647 x -1.\n");
    EXPECT_EQ(wide->count, 1);
    EXPECT_PRED2(ends_with, said_by([&] { EXPECT_EQ(array_Last(wide), nullptr); }),
                 "Array storage failure indexing 0-th element.\n\n");
    array_Delete(wide, 0);
    EXPECT_EQ(wide->count, 0);
    wide->count = kMost;
    EXPECT_NE(said_by([&] { EXPECT_EQ(array_Add(wide), nullptr); }), "");
    EXPECT_EQ(wide->count, kMost);
    array_DeleteRange(wide, 1, kMost);
    EXPECT_EQ(wide->count, 1);
    array_Free(wide);
}

TEST_F(Array, TellsMisuse) {
    Fill(2);
    const struct {
        void (*call)(array_t*);
        std::string said;
    } rows[] = {
        {[](array_t*) { EXPECT_EQ(array_Nth(nullptr, 0), nullptr); },
         "Requesting N on NULL array.\n"},
        {[](array_t* a) { EXPECT_EQ(array_Nth(a, -1), nullptr); },
         "Array index out of bounds : -1.\n"},
        {[](array_t* a) { EXPECT_EQ(array_Nth(a, 2), nullptr); },
         "Array index out of bounds : 2.\n"},
        {[](array_t*) { EXPECT_EQ(array_Last(nullptr), nullptr); },
         "Attempt to access NULL array.\n"},
        {[](array_t*) { EXPECT_EQ(array_InsertAt(nullptr, 0), nullptr); },
         "Attempt to insert element into NULL array.\n"},
        {[](array_t* a) { EXPECT_EQ(array_InsertAt(a, 3), nullptr); },
         "Attempt to insert element outside of array.\n"},
        {[](array_t* a) { EXPECT_EQ(array_InsertCopy(a, -1, a), nullptr); },
         "Attempt to insert element outside of array.\n"},
        {[](array_t*) { array_Delete(nullptr, 0); },
         "Attempt to delete element from NULL array.\n"},
        {[](array_t* a) { array_DeleteFast(a, 2); }, "Attempt to delete invalid element.\n"},
        {[](array_t*) { array_DeleteRange(nullptr, 0, 1); },
         "Attempt to delete element from NULL array.\n"},
        {[](array_t* a) { array_DeleteRange(a, -1, 1); }, "Attempt to delete invalid element.\n"},
        {[](array_t*) { array_DeleteRange(nullptr, 0, 0); }, ""},
        {[](array_t*) { EXPECT_EQ(array_Count(nullptr), 0); }, ""},
        {[](array_t*) { EXPECT_EQ(array_Free(nullptr), 0); }, ""},
    };
    for (const auto& [call, said] : rows) {
        SCOPED_TRACE(said);
        EXPECT_EQ(said_by([call = call, this] { call(array_); }), said);
    }
    EXPECT_EQ(Values(), (std::vector<int>{0, 1}));
}

TEST_F(Array, ClearsAndCopiesByItsCallbacks) {
    array_SetCallbacks(array_, note<'c'>, copy_doubled);
    const int seven = 7;
    array_AddCopy(array_, &seven);
    Fill(4);
    EXPECT_EQ(*static_cast<int*>(array_InsertCopy(array_, 1, &seven)), 14);
    EXPECT_EQ(Values(), (std::vector<int>{14, 14, 0, 2, 4, 6}));
    array_Delete(array_, 1);
    array_DeleteFast(array_, 0);
    EXPECT_EQ(Values(), (std::vector<int>{6, 0, 2, 4}));
    array_DeleteRange(array_, 1, 2);
    array_Resize(array_, -5);
    EXPECT_EQ(journal, (std::vector<std::string>{"c14", "c14", "c0", "c2", "c6", "c4"}));
}

// The list of callbacks of single elements, which only a caller installs.
TEST_F(Array, HonoursACallbackOfASingleElement) {
    const auto install = [this](std::vector<int> own) {
        array_Resize(array_, -1);
        array_SetCallbacks(array_, note<'c'>, nullptr);
        Fill(4);
        array_->destroyList = static_cast<array_ClearElement*>(
            std::calloc(static_cast<std::size_t>(array_->capacity), sizeof(array_ClearElement)));
        for (const int index : own) {
            array_->destroyList[index] = note<'o'>;
        }
    };
    const struct {
        std::string name;
        std::vector<int> own;
        void (*call)(array_t*);
        std::vector<std::string> journal;
        int left;  // the index of the callback that is left, or -1
    } rows[] = {
        {"its own, and then the common one",
         {1},
         [](array_t* a) { array_Delete(a, 1); },
         {"o1", "c1"},
         -1},
        {"the next one's keeps the common one away",
         {1, 2},
         [](array_t* a) { array_Delete(a, 1); },
         {"o1"},
         1},
        {"the next one's alone", {2}, [](array_t* a) { array_Delete(a, 1); }, {}, 1},
        {"the last one's, both ways",
         {3},
         [](array_t* a) { array_Delete(a, 3); },
         {"o3", "c3"},
         -1},
        {"moves down though the elements don't",
         {2},
         [](array_t* a) { array_DeleteFast(a, 0); },
         {"c0"},
         1},
        {"moves up", {1}, [](array_t* a) { array_InsertAt(a, 0); }, {}, 2},
        {"a range, one way each",
         {0, 3},
         [](array_t* a) { array_DeleteRange(a, 0, 2); },
         {"o0", "c1"},
         1},
        {"grows along", {2}, [](array_t* a) { array_SetCount(a, 40); }, {}, 2},
        {"everything",
         {0, 2},
         [](array_t* a) { array_Resize(a, -1); },
         {"o0", "c1", "o2", "c3"},
         -1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        install(row.own);
        row.call(array_);
        EXPECT_EQ(journal, row.journal);
        for (int i = 0; array_->destroyList != nullptr && i < array_->capacity; ++i) {
            EXPECT_EQ(array_->destroyList[i] != nullptr, i == row.left) << "entry " << i;
        }
    }
}

TEST_F(Array, BehavesAsAVectorUnderRandomOperations) {
    std::mt19937 random(7);
    std::vector<int> model;
    const auto below = [&](std::size_t limit) { return static_cast<int>(random() % limit); };
    for (int step = 0; step < 20'000; ++step) {
        const int value = step + 1;
        const int size = static_cast<int>(model.size());
        const int at = size == 0 ? 0 : below(model.size());
        switch (below(size > 200 ? 10 : 7)) {
            case 0:
            case 1:
                array_AddCopy(array_, &value);
                model.push_back(value);
                break;
            case 2:
                array_InsertCopy(array_, at, &value);
                model.insert(model.begin() + at, value);
                break;
            case 3:
                array_Touch(array_, size + 2);
                model.resize(model.size() + 3);
                break;
            case 4:
                ASSERT_NE(array_InsertAt(array_, size), nullptr);
                model.push_back(0);
                break;
            case 5:
                if (size > 0) {
                    array_Delete(array_, at);
                    model.erase(model.begin() + at);
                }
                break;
            case 6:
                if (size > 0) {
                    array_DeleteFast(array_, at);
                    model[static_cast<std::size_t>(at)] = model.back();
                    model.pop_back();
                }
                break;
            case 7: {
                const int count = below(30) - 5;
                array_DeleteRange(array_, at, count);
                const auto first = model.begin() + at;
                const bool to_end = count < 0 || count > size - at;
                model.erase(first, to_end ? model.end() : first + count);
                break;
            }
            case 8:
                array_SetCount(array_, at);
                model.resize(static_cast<std::size_t>(at));
                break;
            default:
                array_SetCount(array_, -3);
                model.clear();
        }
        ASSERT_EQ(Values(), model) << "after step " << step;
        ASSERT_NO_FATAL_FAILURE(ExpectSound());
    }
}

}  // namespace
