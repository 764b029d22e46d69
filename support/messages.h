// The messages of the software in the user's language. An English text is the key into
// the dictionary of a language; a text without a translation comes back as itself.
// docs/support/messages.md tells the whole of it.
//
// All of it is for one thread at a time: dictionaries, once loaded, are shared and kept
// to the end of the process.
#pragma once

#include <string>

/// The text in the language of the preferences, which is read on the first call and never
/// again; "English" where there is none.
std::string msg_Translate(const std::string& text);

/// The text in `language`, whose dictionary is loaded when the language is first asked
/// for. Each run of bytes without a tab or newline in it is looked up by itself, without
/// the white space around it, which stays as it is. Without a dictionary, and for
/// "English" and the empty language, the result is msg_Clean of the text.
std::string msg_TranslateTo(const std::string& language, const std::string& text);

/// The text as a user is to see it: `##` and what follows, which tells translators of the
/// context, is cut off, and a backslash before a backslash or a `#` is dropped.
std::string msg_Clean(const std::string& text);
