// Runs a check in every kind of locale that a host program may have set.
#pragma once

#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "tests/made_locales.h"

/// Calls `check` in the C locale, in UTF-8, in an 8-bit and a multi-byte locale of their own
/// letters and messages, and in one with blanks beyond ASCII.
template <typename Check>
void in_every_locale(Check check) {
    {
        SCOPED_TRACE("locale C");
        check();
    }
    zol::testing_support::MadeLocales locales;
    const char* const made[][2] = {{"C", "UTF-8"}, {"de_DE", "ISO-8859-1"}, {"ja_JP", "EUC-JP"}};
    for (const auto& [language, letters] : made) {
        SCOPED_TRACE(std::string("locale ") + language + '.' + letters);
        if (locales.Set(language, letters)) {
            check();
        }
    }
    SCOPED_TRACE("a locale with more blanks");
    if (locales.SetWithMoreBlanks()) {
        check();
    }
}
