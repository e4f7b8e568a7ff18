// Whatever the drive says, in whatever state, and whatever the operator does in between: the
// recorder's buffer, the lists and the traces stay whole.
//
// An input is a row of nine bytes each: what the operator does, then a frame's payload.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "scope/acquisition.h"
#include "scope/channel_lists.h"
#include "scope/trace.h"
#include "silent_surroundings.h"

using namespace servo;
using namespace servo::fuzz;

namespace {

constexpr std::size_t kRow = 9;

// Objects 3000.00 to 3000.09 of every width, one of them a text, one with a formula that fails.
const dictionary::Store& known_objects() {
    static const dictionary::Store store = [] {
        constexpr std::array<std::string_view, 10> kTypes{
            "Integer16", "Unsigned16", "Integer32", "Unsigned32", "Integer8",
            "Unsigned8", "Integer16",  "Integer32", "Integer16",  "Visible String"};
        std::string bytes;
        for (std::size_t sub = 0; sub < kTypes.size(); ++sub) {
            std::string record(dictionary::kRecordSize, ' ');
            const auto put = [&record](std::size_t at, std::string_view text) {
                record.replace(at, text.size(), text);
            };
            put(0, "30000");
            record[5] = static_cast<char>('0' + sub);
            put(6, "name");
            put(134, kTypes[sub]);
            put(8350, sub == 8 ? "[DEC x]lg()\n[x DEC]lg()" : "[DEC x]N/3\n[x DEC]N*3\n[HEX]");
            put(8550, "NULL");
            bytes += record;
        }
        dictionary::Store loaded;
        loaded.load(bytes);
        return loaded;
    }();
    return store;
}

void check(const scope::ScopeData& data) {
    require(data.rawIndex >= 0 && data.rawIndex <= static_cast<int>(scope::kMaxBytes));
    require(data.rawLength >= 0 && data.rawLength <= static_cast<int>(scope::kMaxBytes));
    require(data.driveConfigNext < 6);
    require(data.ProgressBar1 >= 0 && data.ProgressBar1 <= 100);
    for (const scope::ScopeChannel& channel : data.channels) {
        require(channel.entryCount <= 7 && channel.entryNext < 7);
        require(channel.objectList.items.size() == channel.entryCount + 1U);
        require(channel.objectList.ListIndex >= 0 &&
                channel.objectList.ListIndex <= channel.entryCount);
        require(channel.unitList.ListIndex < static_cast<int>(channel.unitList.items.size()));
        require(channel.samples.size() == scope::kMaxSamples && channel.sampleTotal >= 0);
    }
}

void act(scope::Acquisition& acquisition, scope::ScopeData& data, link::Engine& engine,
         std::uint8_t action) {
    const int channel = (action >> 4) & 3;
    switch (action & 0x0F) {
        case 1:
            acquisition.pick_object(channel, action >> 5);
            break;
        case 2:
            acquisition.click_enable(channel);
            break;
        case 3:
            acquisition.Command6_Click();
            break;
        case 4:
            acquisition.Command7_Click();
            break;
        case 5:
            if (engine.state.scopeState != 0) acquisition.send_step(engine);
            break;
        case 6:
            acquisition.pick_trigger(action >> 4);
            break;
        case 7:
            acquisition.enter_text4();
            break;
        case 8:
            data.Check5 = !data.Check5;
            break;
        case 9:
            data.Text3 = std::to_string(action >> 4);
            break;
        case 10:
            acquisition.link_closed(engine);
            break;
        default:  // any other byte: the operator does nothing
            break;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    OpenPort port;
    NoTime clock;
    NoTimer timer;
    link::DriveValues values;
    link::Engine engine(port, clock, timer, values);
    Silent notice;
    const base::Language language = base::Language::kEnglish;
    scope::ScopeData data;
    for (scope::ScopeChannel& channel : data.channels)
        for (int sub = 0; sub < 7; ++sub)
            scope::Add_OD_To_CH(0x300000 + sub, channel, known_objects(), language);
    scope::Acquisition acquisition(
        {.engine = engine,
         .dictionary = known_objects(),
         .notice = notice,
         .language = language,
         .link_open = [] { return true; }},
        data,
        {.changed = [] {},
         .Movingdata = [&] { scope::Movingdata(data, values.operands, language); },
         .DrawPicture = [] {}});
    engine.set_scope(&acquisition);
    engine.state.status_lane = 2;

    for (std::size_t at = 0; at + kRow <= size; at += kRow) {
        act(acquisition, data, engine, bytes[at]);
        link::Payload payload{};
        std::copy_n(bytes + at + 1, payload.size(), payload.begin());
        acquisition.receive_frame(engine, payload);
        check(data);
    }
    return 0;
}
