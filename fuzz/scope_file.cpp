// A `.scope` file in a program that shows another recording: whatever its bytes, lists and arrays
// stay whole, a file that is refused changes nothing, nothing changes that no file holds, and what
// was read to its end is what an export writes and a further import reads.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "dictionary/store.h"
#include "scope/channel_lists.h"
#include "scope/scope_file.h"

using namespace servo;

namespace {

constexpr base::Language kLanguage = base::Language::kChinese;
constexpr std::int32_t kFormerSample = -77;

void require(bool holds) {
    if (!holds) std::abort();
}

// Ten objects 3000.00 to 3000.09, so that the lists run over.
const dictionary::Store& known_objects() {
    static const dictionary::Store store = [] {
        std::string bytes;
        for (char sub = '0'; sub <= '9'; ++sub) {
            std::string record(dictionary::kRecordSize, ' ');
            const auto put = [&record](std::size_t at, std::string_view text) {
                record.replace(at, text.size(), text);
            };
            put(0, "30000");
            record[5] = sub;
            put(6, "\xB5\xE7\xC1\xF7, NULL");
            put(134, sub < '4' ? "Integer16" : sub < '8' ? "Integer32" : "Visible String");
            put(8350, "[DEC]N*1\n[DEC x]N*[30400710]");
            put(8550, "NULL");
            bytes += record;
        }
        dictionary::Store loaded;
        loaded.load(bytes);
        return loaded;
    }();
    return store;
}

struct Program {
    scope::ScopeData data;
    link::FormulaOperands operands;

    void show_another_recording() {
        for (int i = 0; i < scope::kChannels; ++i) {
            scope::ScopeChannel& channel = data.channels[static_cast<std::size_t>(i)];
            for (int sub = 0; sub < 7; ++sub)
                scope::Add_OD_To_CH(0x300000 + sub, channel, known_objects(), kLanguage);
            channel.objectList.ListIndex = 1 + i;
            channel.enable = i % 2 == 0;
            channel.samples.assign(scope::kMaxSamples, kFormerSample);
        }
        data.Text3 = "3";
        data.Label18 = "as before";
        operands = {{1, true}, {2, true}, {3, false}, {4, true}, {5, true}};
    }

    scope::Imported read(std::string_view bytes) {
        return scope::read_scope(bytes, data, operands, known_objects(), kLanguage);
    }
    std::optional<std::string> write() { return scope::scope_text(data, operands, kLanguage); }
};

// Copied where one is needed, which is quicker than making it.
const Program& former() {
    static const Program program = [] {
        Program made;
        made.show_another_recording();
        return made;
    }();
    return program;
}

void require_whole(const scope::PickList& list) {
    require(list.ListIndex >= -1 && list.ListIndex < static_cast<int>(list.items.size()));
}

void require_whole(const Program& program) {
    for (std::size_t i = 0; i < scope::kChannels; ++i) {
        const scope::ScopeChannel& channel = program.data.channels[i];
        require_whole(channel.objectList);
        require_whole(channel.unitList);
        require(channel.objectList.items.size() <= scope::kEntries);
        require(channel.entryCount < scope::kEntries && channel.entryNext < scope::kEntries);
        require(channel.objectList.items.size() == channel.entryCount + 1U);
        require(channel.samples.size() == scope::kMaxSamples);
        if (channel.picked() != nullptr) {
            const dictionary::Identity key = channel.picked()->key;
            require(key >= 0x300000 && key <= 0x300009);
        }
    }
    const std::int32_t peak = program.operands.o65100310.value;
    require(peak == static_cast<std::int16_t>(peak));
}

// What no file holds.
void require_untouched(const scope::ScopeData& now, const scope::ScopeData& before) {
    require(now.Text2 == before.Text2 && now.Text4 == before.Text4);
    require(now.rawBytes == before.rawBytes && now.rawLength == before.rawLength);
    require(now.importMode == before.importMode && now.sampling == before.sampling);
    require(now.dataValid == before.dataValid && now.zoomWindow == before.zoomWindow);
    require(now.channels[scope::kTrigger].objectList.items ==
            before.channels[scope::kTrigger].objectList.items);
    require(now.channels[scope::kTrigger].samples == before.channels[scope::kTrigger].samples);
    require(now.driveConfigValues[4] == before.driveConfigValues[4]);
    require(now.lastObjectPick[8] == before.lastObjectPick[8]);
}

void require_as_before(Program& program) {
    Program fresh = former();
    require(program.write() == fresh.write());
    require(program.data.Label18 == fresh.data.Label18);
    require(program.operands.o64100320.seen && !program.operands.o30400710.seen);
    for (std::size_t i = 0; i < scope::kCurves; ++i)
        require(program.data.channels[i].samples == fresh.data.channels[i].samples);
}

void require_comes_back(Program& program) {
    const std::optional<std::string> first = program.write();
    if (!first) return;  // its Text3 asks for more samples than there are
    Program second = former();
    require(second.read(*first) == scope::Imported::kDone);
    // Texts that the code page cannot hold were replaced; from now on a file comes back as it was.
    const std::optional<std::string> again = second.write();
    require(again.has_value());
    Program third = former();
    require(third.read(*again) == scope::Imported::kDone);
    require(third.write() == again);
    for (std::size_t i = 0; i < scope::kCurves; ++i)
        require(second.data.channels[i].enable == third.data.channels[i].enable);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Program program = former();
    const scope::Imported result = program.read(bytes);
    require_whole(program);
    require_untouched(program.data, former().data);
    switch (result) {
        case scope::Imported::kRefused:
            require_as_before(program);
            break;
        case scope::Imported::kDone:
            require_comes_back(program);
            break;
        case scope::Imported::kBroken:
            break;
        case scope::Imported::kUnreadable:
            require(false);  // there is no file that could be missing
            break;
    }
    // Whatever it left behind, a whole file is read behind it.
    require(program.read("1,1\r\n1,2,3,4,5\r\na,3145729\r\nNULL\r\nNULL\r\nNULL\r\n9,8,7,6\r\n") ==
            scope::Imported::kDone);
    require(program.data.channels[0].enable && program.data.channels[0].picked() != nullptr);
    require(program.data.channels[0].picked()->key == 0x300001);
    require(program.data.channels[3].samples[0] == 6);
    require_whole(program);
    return 0;
}
