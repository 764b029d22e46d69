// What every export of every family has in common, put to each of them by a table: one row
// an export. A family brings its rows, its handle and the outputs that its calls write to.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tests/api/pending_error.h"
#include "tests/api/recorded_log.h"

namespace zol::testing {

/// Where the success exit stands among the calls of the library underneath.
enum class Order {
    kWorkFirst,
    kSuccessFirst,
    /// The error is emptied first, the call is counted last.
    kEmptiedThenCounted,
};

/// `Outputs` starts with canaries and compares; where a failure clears some of them, it has
/// ClearFirst(count). A handle that the call made is in `made`, or,
/// where it is of another family, is closed by the outputs themselves.
template <class Handle, class Outputs>
struct ExportRow {
    const char* name;
    /// Calls the export with a handle, valid inputs and the outputs.
    double (*call)(Handle* handle, Outputs& outputs);
    double not_initialised;
    /// Result and text where the handle stands for nothing; no text for an export that
    /// takes no handle.
    double undefined;
    const char* undefined_text;
    /// A thing that it asks of the library underneath; the last one tells most.
    const char* operation;
    Order order = Order::kWorkFirst;
    /// How many outputs are cleared where the handle stands for nothing; the others stay.
    std::size_t cleared = 0;
};

/// A family as the sweeps know it.
template <class Handle, class Outputs>
struct ExportFamily {
    const char* prefix;
    std::span<const ExportRow<Handle, Outputs>> rows;
    /// A handle that the export of the row does not fail for.
    Handle* (*open)(const ExportRow<Handle, Outputs>& row);
    int (*close)(Handle* handle);
    /// Of the scripted library: what was called, and the operation that is to throw.
    std::vector<std::string>* journal;
    std::string* throwing;
};

/// Those of `names` that begin with the prefix are those of the rows.
template <class Handle, class Outputs, class Names>
void expect_rows_named(const ExportFamily<Handle, Outputs>& family, const Names& names) {
    std::set<std::string> exported;
    for (const auto& name : names) {
        if (name.starts_with(family.prefix)) exported.emplace(name);
    }
    std::set<std::string> rows;
    for (const auto& row : family.rows) rows.insert(row.name);
    EXPECT_EQ(rows, exported);
}

/// The same for the names of a file, one a line.
template <class Handle, class Outputs>
void expect_whole_table(const ExportFamily<Handle, Outputs>& family, const char* exports_file) {
    std::vector<std::string> names;
    std::ifstream file(exports_file);
    for (std::string name; std::getline(file, name);) names.push_back(name);
    expect_rows_named(family, names);
}

/// In a program in which the library was never initialised. A handle is not even looked at.
template <class Handle, class Outputs>
void expect_failure_before_initialising(const ExportFamily<Handle, Outputs>& family) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): an address that nothing stands at
    auto* const rubbish = reinterpret_cast<Handle*>(std::uintptr_t{8});
    RecordedLog log;
    for (const auto& row : family.rows) {
        SCOPED_TRACE(row.name);
        Outputs outputs;
        EXPECT_EQ(row.call(rubbish, outputs), row.not_initialised);
        EXPECT_EQ(pending_error(), "ZOL_API not initialised.");
        EXPECT_EQ(outputs, Outputs());
    }
    EXPECT_TRUE(family.journal->empty());
    EXPECT_EQ(log.Finish(), std::vector<std::string>{});
    for (const auto& row : family.rows) {
        EXPECT_EQ(log.Row(std::string(row.name) + "_calls"), "0");
    }
}

/// With handles that stand for nothing: the row's words, and nothing touched or counted.
template <class Handle, class Outputs>
void expect_failure_of_undefined(const ExportFamily<Handle, Outputs>& family,
                                 std::initializer_list<Handle*> handles) {
    RecordedLog log;
    for (Handle* const handle : handles) {
        for (const auto& row : family.rows) {
            if (row.undefined_text == nullptr) continue;
            SCOPED_TRACE(row.name);
            Outputs outputs;
            EXPECT_EQ(row.call(handle, outputs), row.undefined);
            EXPECT_EQ(pending_error(), row.undefined_text);
            Outputs expected;
            if constexpr (requires { expected.ClearFirst(row.cleared); }) {
                expected.ClearFirst(row.cleared);
            }
            EXPECT_EQ(outputs, expected);
        }
    }
    EXPECT_EQ(log.Finish(), std::vector<std::string>{});
    EXPECT_EQ(*family.journal, std::vector<std::string>{});
}

namespace export_sweep {

/// A handle of its own for a row, closed at the end unless the row's call does that.
template <class Handle, class Outputs, class Ask>
void with_handle(const ExportFamily<Handle, Outputs>& family, const ExportRow<Handle, Outputs>& row,
                 Ask ask) {
    SCOPED_TRACE(row.name);
    Handle* const handle = family.open(row);
    make_error_pending();
    Outputs outputs;
    const bool closed = ask(handle, outputs);
    if constexpr (requires { outputs.made; }) {
        if (outputs.made != nullptr) family.close(outputs.made);
    }
    if (!closed) family.close(handle);
}

template <class Handle, class Outputs>
bool ends_its_handle(const ExportRow<Handle, Outputs>& row) {
    return std::string_view(row.name).ends_with("_Close");
}

}  // namespace export_sweep

template <class Handle, class Outputs>
void expect_success_of_all(const ExportFamily<Handle, Outputs>& family) {
    for (const auto& row : family.rows) {
        export_sweep::with_handle(family, row, [&](Handle* handle, Outputs& outputs) {
            RecordedLog log;
            row.call(handle, outputs);
            EXPECT_EQ(log.Finish(), std::vector<std::string>{row.name});
            EXPECT_EQ(log.Row(std::string(row.name) + "_calls"), "1");
            EXPECT_EQ(pending_error(), "");
            return export_sweep::ends_its_handle(row);
        });
    }
}

/// What the library underneath throws passes through, and tells what stood before it.
template <class Failure, class Handle, class Outputs>
void expect_order_of_all(const ExportFamily<Handle, Outputs>& family) {
    for (const auto& row : family.rows) {
        if (row.operation == nullptr) continue;
        export_sweep::with_handle(family, row, [&](Handle* handle, Outputs& outputs) {
            *family.throwing = row.operation;
            const std::string error_before = pending_error();
            const bool counted = row.order == Order::kSuccessFirst;
            const bool emptied = row.order != Order::kWorkFirst;
            RecordedLog log;
            EXPECT_THROW(row.call(handle, outputs), Failure);
            EXPECT_EQ(log.Finish(),
                      counted ? std::vector<std::string>{row.name} : std::vector<std::string>{});
            EXPECT_EQ(pending_error(), emptied ? "" : error_before);
            family.throwing->clear();
            return false;
        });
    }
}

}  // namespace zol::testing
