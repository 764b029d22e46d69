#include "engine/formats/omf1_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "engine/formats/read_error.h"
#include "tests/engine/omf1_writer.h"
#include "tests/engine/temporary_file.h"

namespace zol::engine {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing_support::Omf1Writer;
using testing_support::TemporaryFile;

std::string fault_of(const std::function<void()>& action) {
    try {
        action();
    } catch (const ReadError& error) {
        return error.what();
    }
    return "no fault";
}

std::string fault_of_file(const std::string& bytes) {
    const TemporaryFile stored(bytes);
    return fault_of([&] { Omf1Document(File(stored.Path())).Elements(); });
}

std::string fault_of_objects(const std::function<void(Omf1Writer&)>& write) {
    Omf1Writer writer;
    write(writer);
    return fault_of_file(writer.Bytes());
}

TEST(Omf1File, RefusesHeadersThatLie) {
    Omf1Writer writer;
    writer.Object("p", "Project", "");
    const std::string good = writer.Bytes();
    ASSERT_EQ(fault_of_file(good), "no fault");
    const auto with = [&](std::size_t at, const std::string& bytes) {
        return std::string(good).replace(at, bytes.size(), bytes);
    };
    struct Row {
        std::string bytes;
        std::string fault;
    };
    const Row rows[] = {
        {"", "ends at byte 0"},
        {good.substr(0, 59), "ends at byte 59"},
        {with(0, "\x81"), "no magic number"},
        {with(4, "OMF-v9"), "\"OMF-v9.9.0\""},
        {with(14, "1"), "\"OMF-v0.9.01\""},
        {with(52, std::string(1, 59)), "JSON at byte 59"},
        {good.substr(0, 60), "JSON at byte 60 of a file of 60"},
        {with(52, std::string(8, '\xFF')), "JSON at byte 18446744073709551615"},
        {with(60, "["), "not JSON at byte 64:"},
        {good + "}", "not JSON at byte " + std::to_string(good.size()) + ":"},
        {good.substr(0, 60) + "[]", "$ is a list, an object is expected"},
    };
    for (const Row& row : rows) EXPECT_THAT(fault_of_file(row.bytes), HasSubstr(row.fault));
}

TEST(Omf1File, RefusesReferencesThatDoNotLeadToElements) {
    struct Row {
        std::function<void(Omf1Writer&)> write;
        const char* fault;
    };
    const Row rows[] = {
        {[](Omf1Writer& w) { w.Object("a", "ScalarArray", ""); }, "and no Project"},
        {[](Omf1Writer& w) {
             w.Object("a", "Project", "");
             w.Object("b", "Project", "");
         },
         "more than one Project"},
        {[](Omf1Writer& w) { w.Object("00000000-0000-0000-0000-000000000000", "Legend", ""); },
         "is not a Project"},
        {[](Omf1Writer& w) { w.Object("p", "Project", R"("elements":["gone"])"); },
         "$.p.elements[0] refers to no object"},
        {[](Omf1Writer& w) { w.Object("p", "Project", R"("elements":["p"])"); },
         "$.p.elements[0] refers to a Project, PointSetElement or"},
        {[](Omf1Writer& w) { w.Object("p", "Project", R"("elements":[7])"); },
         "$.p.elements[0] is a number"},
        {[](Omf1Writer& w) { w.Object("p", "Project", R"("elements":{"e":1})"); },
         "$.p.elements is an object, a list is expected"},
        {[](Omf1Writer& w) {
             std::string members = "\"m\":0";
             for (int i = 0; i < 1000; ++i) members += ",\"m\":0";
             w.Object("p", "Project", members);
         },
         "$.p has 1002 members"},
    };
    for (const Row& row : rows) EXPECT_THAT(fault_of_objects(row.write), HasSubstr(row.fault));
}

TEST(Omf1File, NamesElementsAndTakesEachOnce) {
    Omf1Writer writer;
    // The header's UUID goes before any other Project.
    writer.Object("decoy", "Project", R"("elements":["gone"])");
    writer.Object("00000000-0000-0000-0000-000000000000", "Project",
                  R"("elements":["s","v","s","u"])");
    writer.Object("s", "SurfaceElement", R"("name":"topo")");
    writer.Object("v", "VolumeElement", R"("name":"")");
    writer.Object("u", "LineSetElement", R"("name":null)");
    const TemporaryFile stored(writer.Bytes());
    const File file(stored.Path());
    std::vector<std::string> names;
    for (const Omf1Element& element : Omf1Document(file).Elements()) names.push_back(element.name);
    EXPECT_THAT(names, ElementsAre("topo", "element 2", "element 4"));
}

TEST(Omf1File, RefusesBlobsThatCanNotBe) {
    struct Row {
        const char* description;
        const char* fault;
    };
    // The one stream is at byte 60; the JSON starts at 60 + its length.
    const Row rows[] = {
        {R"({"start":60,"length":11,"dtype":"<f4"})", "\"<f4\""},
        {R"({"start":60,"length":11,"dtype":"image/png"})", "image/png"},
        {R"({"start":59,"length":11,"dtype":"<f8"})", "lies outside"},
        {R"({"start":60,"length":1000000,"dtype":"<f8"})", "lies outside"},
        {R"({"start":9223372036854775807,"length":9223372036854775807,"dtype":"<f8"})",
         "lies outside"},
        {R"({"start":60,"length":-1,"dtype":"<f8"})", "lies outside"},
        {R"({"start":18446744073709551615,"length":1,"dtype":"<f8"})", "not a whole number"},
        {R"({"start":61,"length":10,"dtype":"<f8"})", "is no zlib stream, at byte 61"},
        {R"({"start":60,"length":7,"dtype":"<f8"})", "is no zlib stream"},
        {R"({"start":60,"length":11})", "has no \"dtype\""},
        {R"([60,11])", "is a list"},
        {R"(null)", "has no \"array\""},
    };
    for (const Row& row : rows) {
        Omf1Writer writer;
        writer.Blob(std::vector<double>{1, 2});
        writer.Object("p", "Project", R"("description":"a")");
        writer.Object("a", "ScalarArray", std::string("\"array\":") + row.description);
        const TemporaryFile stored(writer.Bytes());
        const File file(stored.Path());
        const Omf1Document document(file);
        EXPECT_THAT(fault_of([&] {
                        document.Blob(document.Project().Get("description"), {"ScalarArray"});
                    }),
                    HasSubstr(row.fault));
    }
}

TEST(Omf1File, InflatesExactlyWhatIsExpected) {
    const std::string three(24, '\1');
    const std::string stream = testing_support::zlib_stream(three);
    std::string corrupt = stream;
    corrupt.back() = static_cast<char>(corrupt.back() ^ 1);
    struct Row {
        std::string stream;
        std::size_t bytes;
        const char* fault;
    };
    const Row rows[] = {
        {stream, 24, "no fault"},
        {stream, 32, "holds 24 bytes, 32 are expected"},
        {stream, 16, "more than the expected 16"},
        {corrupt, 24, "does not decompress"},
        {stream.substr(0, stream.size() - 1), 24, "does not decompress"},
        {stream + "x", 24, "goes on for 1 bytes"},
        {testing_support::zlib_stream(std::string(50'000'000, '\0')), 24, "more than the expected"},
    };
    for (const Row& row : rows) {
        const TemporaryFile stored(row.stream);
        const File file(stored.Path());
        const Omf1Blob blob{0, row.stream.size(), Omf1Blob::Type::Float64, "array a"};
        std::string bytes(row.bytes, '\0');
        EXPECT_THAT(fault_of([&] { inflate_exactly(file, blob, bytes.data(), bytes.size()); }),
                    HasSubstr(row.fault));
    }
}

TEST(Omf1File, TellsClaimsThatNoStreamCanHold) {
    const std::string zeros(10'000'000, '\0');
    const std::string best = testing_support::zlib_stream(zeros);
    const Omf1Blob blob{60, best.size(), Omf1Blob::Type::Float64, "array a"};
    EXPECT_EQ(fault_of([&] { check_can_hold(blob, zeros.size()); }), "no fault");
    EXPECT_THAT(fault_of([&] { check_can_hold(blob, zeros.size() * 2); }), HasSubstr("can't hold"));
}

}  // namespace
}  // namespace zol::engine
