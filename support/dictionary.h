// The dictionary of one language: which text stands for which. A trie leads along the
// bytes in which keys begin, just as deep as it takes to part a key from its neighbours;
// the rest of a key is compared at the node where the trie lets go of it.
// docs/formats/dictionary.md tells of the file, and of how keys are written.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/dictionary_file.h"

namespace zol::support {

struct DictionaryEntry {
    bool isPattern = false;
    std::string tail;  ///< the key behind the bytes that lead to the node
    std::string translation;
};

struct DictionaryNode {
    DictionaryNode() { next.fill(-1); }

    std::array<std::int32_t, 256> next;  ///< the node that each byte leads to; -1 none
    std::vector<DictionaryEntry> entries;
};

struct Dictionary {
    /// Node 0 is the root.
    std::vector<DictionaryNode> nodes = std::vector<DictionaryNode>(1);
};

/// The trie has at most so many nodes, about 270 MB of them, which is enough for 80,000
/// messages. A key that would need one more stays at the last node on its way.
constexpr std::size_t kMostDictionaryNodes = std::size_t{1} << 18;

/// The trie of these pairs, whatever their order.
Dictionary dictionary_of(std::vector<DictionaryPair> pairs);

/// Where the dictionary of a language lies: "<language>_dictionary" in the directory of
/// the environment variable OSTREL_FLIB. Without that variable it is set, for the
/// process, to "bin/flib" under OSTREL; nothing when that isn't set either.
std::optional<std::string> dictionary_path(const std::string& language);

}  // namespace zol::support

/// Replaces what the dictionary holds by the file of this language. Empty when there is
/// no such file; a file beyond the limits of read_dictionary_file gives an empty one too.
void dict_Load(zol::support::Dictionary& dictionary, const std::string& language);

/// The translation of the text, with the trailing blanks of the text behind it. A text
/// that isn't found comes back through msg_Clean, and with the environment variable
/// SAVE_UNTRANSLATED set (which the first call in the process looks at) it is added to
/// the file "untranslated" in the current directory.
std::string dict_Lookup(const zol::support::Dictionary& dictionary, const std::string& text);
