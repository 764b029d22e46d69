// `zol dictionary check`: what is wrong with a dictionary, by lines.

#include "support/path.h"
#include "tools/zol/dictionary_check.h"
#include "tools/zol/exit_codes.h"
#include "tools/zol/json_writer.h"
#include "tools/zol/message_commands.h"

namespace zol::tool {

namespace {

std::string content_of(const std::string& file) {
    if (path_Exists(file.c_str()) == 0) throw ReadFailure("there is no file '" + file + "'.");
    auto content = support::read_dictionary_file(file);
    if (!content) throw ReadFailure("'" + file + "' can't be read as a dictionary.");
    return std::move(*content);
}

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

void write_text(const std::string& file, std::size_t n_pairs, const std::vector<Finding>& findings,
                Output& output) {
    for (const Finding& finding : findings) {
        output.Write(file + ':' + std::to_string(finding.line) + ": " + finding.text + '\n');
    }
    output.Write(counted(n_pairs, "pair") + ", " + counted(findings.size(), "finding") + '\n');
}

void write_json(const std::string& file, std::size_t n_pairs, const std::vector<Finding>& findings,
                Output& output) {
    JsonWriter json(output);
    json.BeginObject();
    json.Key("name");
    json.Text(file);
    json.Key("pairs");
    json.Whole(static_cast<long long>(n_pairs));
    json.Key("findings");
    json.BeginList();
    for (const Finding& finding : findings) {
        json.BeginObject(JsonWriter::Layout::Flat);
        json.Key("line");
        json.Whole(static_cast<long long>(finding.line));
        json.Key("kind");
        json.Text(finding.kind);
        json.Key("key");
        json.Text(finding.key);
        json.Key("text");
        json.Text(finding.text);
        json.EndObject();
    }
    json.EndList();
    json.EndObject();
}

}  // namespace

int run_dictionary_check(const DictionaryCheckRequest& request, Output& output) {
    const std::string content = content_of(request.file);
    const support::DictionaryPairs pairs = support::pairs_of(content);
    const std::vector<Finding> findings = check_dictionary(pairs);
    const auto write = request.as_json ? write_json : write_text;
    write(request.file, pairs.pairs.size(), findings, output);
    return findings.empty() ? kGood : kFaultsFound;
}

}  // namespace zol::tool
