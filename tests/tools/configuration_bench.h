// The form `imexport` on the virtual bench: without a line, or with a drive of many objects.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "base/gbk.h"
#include "dictionary/store_of.h"
#include "support/fake_drive.h"
#include "support/fakes.h"
#include "support/virtual_bench.h"
#include "tools/configuration.h"

namespace servo::tools::test {

using namespace std::chrono_literals;
using servo::test::FakeDrive;

inline RawRecord record(std::string index, std::string sub, std::string type, std::string attr,
                        const std::string& zh, std::string en, std::string formula = "[DEC]N*1") {
    RawRecord made;
    made.index = std::move(index);
    made.sub = std::move(sub);
    made.name_ch = base::utf8_to_gbk(zh);
    made.name_en = std::move(en);
    made.type = std::move(type);
    made.attribute = std::move(attr);
    made.formula = std::move(formula);
    return made;
}

inline dictionary::Store small_dictionary() {
    return dictionary::store_of(
        {record("6060", "00", "Integer8", "RWL", "工作模式", "Modes of operation"),
         record("6081", "00", "Unsigned32", "RW", "梯形速度", "Profile velocity",
                "[DEC rpm]N*1875/512/[64100320]\n[rpm DEC]N/1875*512*[64100320]\n[DEC]N*1"),
         record("6410", "03", "Unsigned32", "RW", "编码器分辨率", "Encoder resolution"),
         record("2010", "03", "Unsigned16", "RWL", "输入1功能", "Input 1 function", "[HEX]N*1"),
         record("6073", "00", "Unsigned16", "RW", "最大电流", "Max current",
                "[DEC Ap]N/2048*[65100310]/10\n[Ap DEC]N*2048/[65100310]*10"),
         record("6086", "00", "Integer16", "RW", "曲线类型", "Motion profile type"),
         record("6041", "00", "Unsigned16", "RH", "状态字", "Statusword", "[HEX]N*1"),
         record("2FFF", "00", "Unsigned16", "W", "重启命令", "Restart command", "[HEX]N*1"),
         record("1008", "00", "Visible String", "R", "设备名称", "Device name")});
}

struct ConfigurationForm : servo::test::VirtualBench {
    std::filesystem::path put(std::string_view name, std::string_view bytes) {
        folder.put(name, bytes);
        return folder / name;
    }
    bool load(std::string_view bytes) { return form.load_source(put("values.cdi", bytes)); }
    bool load_list(std::string_view bytes) { return form.load_template(put("list.cdo", bytes)); }
    const SourceRow& row(std::size_t at) const { return form.data().source.at(at); }
    const DriverRow& driver(std::size_t at) const { return form.data().driver.at(at); }
    bool finish(std::chrono::microseconds limit = 60s) {
        return run_until([this] { return !form.running(); }, limit);
    }
    // The lock goes as it does in the window.
    void unlock() { form.Timer1_Timer(); }

    base::Language language = base::Language::kEnglish;
    dictionary::Store store = small_dictionary();
    std::deque<std::optional<std::filesystem::path>> answers;  // to the file dialog
    std::vector<ConfigurationFile> questions;
    ImExport form{{.engine = engine,
                   .dictionary = store,
                   .notice = notice,
                   .language = language,
                   .folder = folder.path(),
                   .ask_file = [this](const ConfigurationFile& question)
                       -> std::optional<std::filesystem::path> {
                       questions.push_back(question);
                       if (answers.empty()) return std::nullopt;
                       auto answer = answers.front();
                       answers.pop_front();
                       return answer;
                   }}};
};

// With a drive that answers by a table; the poller has nothing of its own to show.
struct ConfigurationLine : ConfigurationForm {
    explicit ConfigurationLine(bool open = true) {
        for (const link::WireKey key : {0x60600001U, 0x60810004U, 0x64100304U, 0x20100302U,
                                        0x60730002U, 0x60860002U, 0x60410002U})
            drive.add(key, 0);
        if (open) open_link();
    }

    // --- 600 objects of all three sizes.
    static constexpr int kObjects = 600;
    static link::WireKey key_of(int object) {
        const std::uint32_t identity = 0x500000U +
                                       static_cast<std::uint32_t>(object / 200) * 0x100 +
                                       static_cast<std::uint32_t>(object % 200 + 1);
        return identity << 8 | (1U << (object % 3));
    }
    static link::Identity identity_of(int object) {
        return dictionary::identity_of(key_of(object));
    }
    // As the drive holds it, differing from object to object.
    static std::int64_t value_of(int object) {
        const std::uint32_t scattered = static_cast<std::uint32_t>(object + 1) * 2654435761U;
        const std::uint32_t size = key_of(object) & 0xFF;
        return size == 4 ? scattered : scattered >> (size == 1 ? 24 : 16);
    }
    static std::string file_of_600() {
        std::string text;
        for (int object = 0; object < kObjects; ++object)
            text += configuration_index(key_of(object)) + "," + std::to_string(value_of(object)) +
                    ",True\r\n";
        return text;
    }
    void add_600(bool with_values) {
        for (int object = 0; object < kObjects; ++object)
            drive.add(key_of(object), with_values ? value_of(object) : 0);
    }
    // Requests of an object that reached the drive.
    int asked(link::Identity object, bool writes) const {
        int count = 0;
        for (const FakeDrive::Request& request : drive.requests)
            if (link::reply_key(request.payload) == object)
                count += (request.payload[0] != link::kRead) == writes ? 1 : 0;
        return count;
    }
    std::vector<link::Payload> writes() const {
        std::vector<link::Payload> found;
        for (const FakeDrive::Request& request : drive.requests)
            if (request.payload[0] != link::kRead) found.push_back(request.payload);
        return found;
    }

    FakeDrive drive{time, line};
};

// Five of a hundred frames are lost and five corrupted, in each direction.
class FrameFaults {
  public:
    FrameFaults(FakeDrive& drive, servo::test::VirtualLine& line, unsigned seed)
        : drive_(drive), random_(seed) {
        line.to_drive.noise = [this](std::uint8_t byte) { return request_byte(byte); };
        drive.answers = [this](const link::Payload& payload) { return answered(payload); };
        drive.mangle = [this](std::vector<std::uint8_t> frame) {
            return mangled(std::move(frame));
        };
    }

    // Requests that came although the object had its answer already.
    int needless = 0;
    int lost = 0;
    int corrupted = 0;

  private:
    enum class Fate { kWhole, kLost, kCorrupted };

    Fate draw() {
        const double drawn = std::uniform_real_distribution<double>(0, 1)(random_);
        if (drawn < 0.05) {
            ++lost;
            return Fate::kLost;
        }
        if (drawn < 0.10) {
            ++corrupted;
            return Fate::kCorrupted;
        }
        return Fate::kWhole;
    }
    std::vector<std::uint8_t> request_byte(std::uint8_t byte) {
        const std::size_t at = sent_++ % link::kFrameSize;
        if (at == 0) {
            request_ = draw();
            hit_ = random_() % link::kFrameSize;
        }
        if (request_ == Fate::kLost) return {};
        if (request_ == Fate::kCorrupted && at == hit_)
            return {static_cast<std::uint8_t>(byte ^ (1U << (random_() % 8)))};
        return {byte};
    }
    bool answered(const link::Payload& payload) {
        object_ = link::reply_key(payload);
        // Behind a broken request a drive may find a frame where none was sent: a checksum that
        // equals the ID begins one. What it then takes for an object is none.
        if (has_answer_[object_] && drive_.objects.contains(object_)) ++needless;
        answer_ = draw();
        if (answer_ == Fate::kWhole) has_answer_[object_] = true;
        return answer_ != Fate::kLost;
    }
    std::vector<std::uint8_t> mangled(std::vector<std::uint8_t> frame) {
        if (answer_ == Fate::kCorrupted)
            frame[random_() % frame.size()] ^= static_cast<std::uint8_t>(1U << (random_() % 8));
        return frame;
    }

    FakeDrive& drive_;
    std::mt19937 random_;
    std::size_t sent_ = 0;
    std::size_t hit_ = 0;
    Fate request_ = Fate::kWhole;
    Fate answer_ = Fate::kWhole;
    link::Identity object_ = 0;
    std::map<link::Identity, bool> has_answer_;
};

}  // namespace servo::tools::test
