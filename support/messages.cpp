#include "support/messages.h"

#include <map>
#include <utility>

#include "platform/ZelmarDevAExport.h"
#include "support/dictionary.h"
#include "support/message_text.h"
#include "support/variant.h"

namespace {

using zol::support::Dictionary;

/// The dictionaries asked for so far.
class Dictionaries {
public:
    const Dictionary& Of(const std::string& language) {
        if (last_ == nullptr || language != last_language_) {
            auto place = by_language_.find(language);
            if (place == by_language_.end()) {
                // Apart first: one that memory ran out for is not taken for loaded.
                Dictionary loaded;
                dict_Load(loaded, language);
                place = by_language_.emplace(language, std::move(loaded)).first;
            }
            last_ = &place->second;
            last_language_ = language;
        }
        return *last_;
    }

private:
    std::map<std::string, Dictionary> by_language_;
    std::string last_language_;
    const Dictionary* last_ = nullptr;
};

// Never destroyed: whoever speaks while the process ends may still translate.
Dictionaries& dictionaries() {
    static auto* const instance = new Dictionaries;
    return *instance;
}

constexpr const char* kEnglish = "English";

std::string preferred_language() {
    MVariant preferences(pref_CGetPreferences());
    const std::string language = preferences["language"].AsCString();
    return language.empty() ? kEnglish : language;
}

}  // namespace

std::string msg_Translate(const std::string& text) {
    static const auto* const language = new std::string(preferred_language());
    return msg_TranslateTo(*language, text);
}

std::string msg_TranslateTo(const std::string& language, const std::string& text) {
    if (language.empty() || language == kEnglish) return msg_Clean(text);
    const Dictionary& dictionary = dictionaries().Of(language);
    return zol::support::translate_pieces(
        text, [&](const std::string& piece) { return dict_Lookup(dictionary, piece); });
}
