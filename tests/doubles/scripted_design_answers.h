// How the scripted design library answers: each answer is noted under its operation's name.
#pragma once

#include <cstdint>
#include <string>

#include "platform/zolDesignExport.h"
#include "tests/doubles/journal.h"
#include "tests/doubles/scripted_design.h"

namespace zol::doubles {

template <class... Arguments>
void note(const char* operation, const Arguments&... arguments) {
    design_journal.push_back(journal_entry(operation, arguments...));
    if (design_script.throwing == operation) {
        throw DesignFailure(operation);
    }
}

template <class... Arguments>
bool truth(const char* operation, const Arguments&... arguments) {
    note(operation, arguments...);
    return design_script.true_of.contains(operation);
}

template <class... Arguments>
double real(const char* operation, const Arguments&... arguments) {
    note(operation, arguments...);
    return number_of(operation);
}

template <class... Arguments>
std::int32_t whole(const char* operation, const Arguments&... arguments) {
    return static_cast<std::int32_t>(real(operation, arguments...));
}

template <class... Arguments>
std::string text(const char* operation, const Arguments&... arguments) {
    note(operation, arguments...);
    return text_of(operation);
}

template <class... Arguments>
design::Point point(const char* operation, const Arguments&... arguments) {
    const double x = real(operation, arguments...);
    return {x, x + 1, x + 2, x + 3, static_cast<std::int32_t>(x) + 4, text_of(operation)};
}

}  // namespace zol::doubles
