// The form `Homing2` with a dictionary, files and observers of the test's own.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/gbk.h"
#include "base/temp_folder.h"
#include "dictionary/store_of.h"
#include "support/fakes.h"
#include "tools/homing.h"

namespace servo::tools::test {

// The nine rows, as the shipped file has them.
inline constexpr std::string_view kRowsFile =
    "title\r\nheading\r\n"
    "offset 607C00\r\nmethod 609800\r\nspeed 609901\r\nback 609902\r\npower-up 215001\r\n"
    "acc 609A00\r\ncurrent 215002\r\noffset mode 215004\r\nblind 215003\r\n";

inline RawRecord homing_record(std::string index, std::string sub, std::string type) {
    RawRecord record;
    record.index = std::move(index);
    record.sub = std::move(sub);
    record.type = std::move(type);
    record.attribute = "RW";
    record.formula = "[DEC]N*1";
    return record;
}

inline dictionary::Store homing_store() {
    return dictionary::store_of(
        {homing_record("607C", "00", "Integer32"), homing_record("6098", "00", "Integer8"),
         homing_record("6099", "01", "Unsigned32"), homing_record("6099", "02", "Unsigned32"),
         homing_record("2150", "01", "Unsigned8"), homing_record("609A", "00", "Unsigned32"),
         homing_record("2150", "02", "Integer32"), homing_record("2150", "04", "Unsigned8"),
         homing_record("2150", "03", "Unsigned8")});
}

class CountingObserver final : public HomingObserver {
  public:
    void controls_changed() override { ++changes; }
    void focus_moved() override { ++focus_moves; }

    int changes = 0;
    int focus_moves = 0;
};

// Rows of the form by their place.
enum HomingRow : int {
    kOffset,
    kMethod,
    kSpeed,
    kBackSpeed,
    kPowerUp,
    kAcceleration,
    kCurrent,
    kOffsetMode,
    kBlind,
};

struct HomingForm {
    using Write = std::pair<dictionary::WireKey, std::int32_t>;

    HomingForm() {
        std::filesystem::create_directories(folder / "sys");
        std::filesystem::create_directories(folder / "HomingPics");
        folder.put("sys/HomingMode.ini", kRowsFile);
        operands.o64100320 = {10000, true};
        operands.o65100310 = {150, true};
        form.load(folder.path());
        form.set_observer(&observer);
    }

    void put_picture(const std::string& name) {
        folder.put("HomingPics/" + name, "\xFF\xD8\xFF" + name);
    }
    void put_text(const std::string& name, const std::string& text) {
        folder.put("HomingPics/" + name, base::utf8_to_gbk(text));
    }
    // Typed and confirmed.
    void enter(std::string_view method) {
        form.type_Text1(std::string(method));
        EXPECT_TRUE(form.Text1_KeyPress(13));
    }
    void enter(HomingEntry entry, std::string_view text) {
        form.enter(entry);
        form.type(entry, std::string(text));
        EXPECT_TRUE(form.KeyPress(entry, 13));
    }
    const HomingData& data() const { return form.data(); }
    const std::string& text(HomingEntry entry) const {
        return data().entries[static_cast<std::size_t>(entry)];
    }

    TempFolder folder;
    dictionary::Store store = homing_store();
    link::FormulaOperands operands;
    base::Language language = base::Language::kEnglish;
    servo::test::RecordedNotice notice;
    std::vector<Write> writes;
    CountingObserver observer;
    Homing2 form{
        {store, operands, language, notice,
         [this](dictionary::WireKey key, std::int32_t value) { writes.emplace_back(key, value); }}};
};

}  // namespace servo::tools::test
