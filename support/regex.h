// Text patterns: tests a text against a pattern, hands back what was captured, rewrites
// text. Two families with two languages: a pattern is written for the function that
// reads it. docs/support/patterns.md tells the language of regex_Match and pat_Substitute.
//
// Texts and patterns are bytes, whatever the locale; offsets and lengths count bytes.
// Each call compiles its pattern, uses it once and frees it; all of them may run in
// several threads. A pattern that can't be compiled is told through err_Print and counts
// as one that matches nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct re_registers;

/// Length in bytes of the leftmost match of `pattern` in `text`; 0 without a match, for a
/// pattern that doesn't compile, and for an empty match. Non-zero `ignore_case` folds the
/// letters a to z. On a match the offsets of the groups are stored in `registers`, unless
/// that is null, in arrays that the caller releases by free(); without a match it is not
/// written. A text of more than INT32_MAX bytes matches nothing.
std::int32_t regex_Match(const char* text, const char* pattern, std::int32_t ignore_case,
                         re_registers* registers);

/// The same for strings, which are read up to their first null byte.
std::int32_t regex_Match(const std::string& text, const std::string& pattern, bool ignore_case);

/// The same; `groups` receives the text of the whole match and of the groups behind it,
/// at most 30 in all and none from the first group on that took no part. It is emptied
/// when the result is 0.
std::int32_t regex_Match(const std::string& text, const std::string& pattern, bool ignore_case,
                         std::vector<std::string>& groups);

/// `text` with the first match of `pattern`, or all of them with `repeat`, replaced. A
/// backslash and a digit in `replacement` stand for the group of that number, 0 for the
/// whole match, and for nothing where the match has no such group; all else is taken as
/// it is. A pattern that doesn't compile gives the empty string. Text and pattern are
/// read up to their first null byte.
///
/// With `repeat`, a pattern that can match the empty string is the caller's error: the
/// call does not return.
std::string pat_Substitute(const std::string& text, const std::string& pattern,
                           const std::string& replacement, bool ignore_case, bool repeat);

/// Whether `pattern`, in a grammar of std::regex, matches somewhere in `text`; `matches`
/// receives the text of each match in turn, without overlaps and without groups. Flavour:
/// 0 POSIX basic, 1 POSIX extended, 3 awk, 4 grep, 5 egrep, any other ECMAScript. A
/// pattern that doesn't compile gives false and leaves `matches` alone. Throws
/// std::regex_error when the matching itself has to be given up.
bool regex_Match2(const std::string& text, const std::string& pattern, bool ignore_case,
                  std::vector<std::string>& matches, std::int32_t flavour);

/// The same, where the matches themselves are not wanted.
bool regex_Match2(const std::string& text, const std::string& pattern, bool ignore_case,
                  std::int32_t flavour);
