// Runs a fuzz target without a fuzzing engine: on each file of a corpus as it is, and on
// copies with bytes changed, cut, doubled and mixed. The same run every time.
//
// Arguments: copies of each file, then files; "table+sidecar" joins two.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

// Large files change little by a few bytes: their beginnings are enough.
constexpr std::size_t kMostBytes = 20000;

std::string read(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::cerr << "can't read " << path << '\n';
        std::exit(2);
    }
    return {std::istreambuf_iterator<char>(in), {}};
}

std::string read_input(const std::string& argument) {
    const std::size_t plus = argument.find('+');
    std::string input = read(argument.substr(0, plus));
    if (plus != argument.npos) {
        input += '\x1e' + read(argument.substr(plus + 1));
    }
    return input;
}

std::string changed(std::string input, std::mt19937& random) {
    static const std::vector<std::string> kPieces = {"\"",
                                                     ",",
                                                     "\n",
                                                     "\r",
                                                     ";",
                                                     "-",
                                                     "1e308",
                                                     "nan",
                                                     "inf",
                                                     "0",
                                                     "99999999999999999999",
                                                     std::string(1, '\0'),
                                                     "\xff",
                                                     "{",
                                                     "}",
                                                     "[",
                                                     "]",
                                                     "null",
                                                     "-1",
                                                     "1e-320",
                                                     "\t",
                                                     " ",
                                                     "#"};
    const auto below = [&](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
    for (std::size_t changes = 1 + below(6); changes > 0; --changes) {
        const std::size_t at = below(input.size() + 1);
        switch (below(6)) {
            case 0:
                input.resize(at);
                break;
            case 1:
                input.insert(at, kPieces[below(kPieces.size())]);
                break;
            case 2:
                input.erase(at, below(20));
                break;
            case 3:
                input.insert(at, input.substr(below(input.size()), below(200)));
                break;
            default:
                if (at < input.size()) {
                    input[at] = static_cast<char>(random());
                }
        }
    }
    return input;
}

void run(const std::string& input) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 3) {
        std::cerr << "usage: COPIES FILE...\n";
        return 2;
    }
    const int copies = std::stoi(arguments[1]);
    std::mt19937 random(20);
    for (int i = 2; i < count; ++i) {
        const std::string input = read_input(arguments[i]);
        try {
            run(input);
            for (int copy = 0; copy < copies; ++copy) {
                run(changed(input.substr(0, kMostBytes), random));
            }
        } catch (const std::exception& error) {
            std::cerr << arguments[i] << ": thrown: " << error.what() << '\n';
            return 1;
        }
    }
    return 0;
}
