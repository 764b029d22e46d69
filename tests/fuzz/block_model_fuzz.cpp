// Opens any bytes as a block model and asks it everything. An input may hold a
// sidecar too, behind the byte 0x1e.
//
// With a fuzzing engine it is built as a target of its own; in the ordinary test run
// standalone.cpp replays the samples and changed copies of them.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/zolBlockExport.h"
#include "tests/engine/temporary_file.h"

namespace {

using zol::model::block::Model;

constexpr int kMostBlocks = 300;

// Results are summed up only so that no call can be left out.
double ask_everything(Model& model) {
    double sum = model.GetModelExtent().x1 + model.ToWorld(1, 2, 3).x + model.ToModel(1, 2, 3).y;
    for (int i = 0; i < model.NSchemas(); ++i) {
        sum += model.GetSchema(i).GetMaximumSize().z;
    }
    const auto names = model.GetFieldVector(1 | 2);
    for (const std::string& name : names) {
        sum += model.GetFieldDefault(name) +
               static_cast<double>(model.GetFieldTranslations(name).size());
    }
    int left = kMostBlocks;
    for (model.FindFirst(); !model.IsEof() && left-- > 0; model.Next()) {
        for (const std::string& name : names) {
            sum += model.Get(name) + static_cast<double>(model.GetString(name).size());
        }
    }
    model.SetPosition({model.NBlocks() - 1});
    const auto box = model.GetBlockExtent().GetExtent();
    model.FindXyz((box.x0 + box.x1) / 2, (box.y0 + box.y1) / 2, (box.z0 + box.z1) / 2);
    return sum + static_cast<double>(model.GetPosition().value);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t mark = input.find('\x1e');
    zol::testing_support::TemporaryFile file(input.substr(0, mark));
    if (mark != input.npos) {
        file.WriteSidecar(input.substr(mark + 1));
    }
    Model model(file.Path(), "r");
    const volatile double answers = model.IsOpen() ? ask_everything(model) : 0.0;
    static_cast<void>(answers);
    return model.Close();
}
