#include "sim/drive_bench.h"

#include <algorithm>
#include <numeric>

namespace servo::sim::test {

namespace {

void field(std::string& record, std::size_t at, std::string_view text) {
    record.replace(at, text.size(), text);
}

}  // namespace

std::string dictionary_file(const std::vector<Entry>& entries) {
    std::string file;
    for (const Entry& entry : entries) {
        std::string record(dictionary::kRecordSize, ' ');
        field(record, 0, entry.key);
        field(record, 6, "Name");
        field(record, 70, "Name");
        field(record, 134, entry.type);
        field(record, 150, entry.attribute);
        field(record, 8350, "[DEC]N*1");
        field(record, 8550, "N");
        file += record;
    }
    return file;
}

const std::string_view kBenchValues =
    "key\tdefault\tmin\tmax\tflags\n"
    "# one of each kind\n"
    "200001\t200\t\t\ts\n"
    "200002\t-5\t-100\t100\ts\n"
    "200003\t40000\t10\t50000\ts\n"
    "200004\t-30000\t\t\ts\n"
    "200005\t0xFFFFFFFF\t\t\ts\n"
    "200006\t-2000000000\t\t\ts\n"
    "200007\taxis three\t\t\ts\n"
    "200008\t\t\t\t\n"
    "200009\tabc\t\t\t\n"
    "20000A\t7\t\t\tr\n"
    "20000B\t9\t\t\tw\n"
    "20000C\t77\t\t\t\n"
    "20000D\tseven b\t\t\t\n"
    "20000E\tfourteen bytes\t\t\t\n"
    "200010\t1\t\t\t\n"
    "606000\t1\t-4\t10\ts\n";

const std::vector<Entry>& bench_entries() {
    static const std::vector<Entry> kEntries{
        {"200001", "Unsigned8", "RW"},      {"200002", "Integer8", "RW"},
        {"200003", "Unsigned16", "RW"},     {"200004", "Integer16", "RW"},
        {"200005", "Unsigned32", "RW"},     {"200006", "Integer32", "RW"},
        {"200007", "Visible String", "R"},  {"200008", "Visible String", "R"},
        {"200009", "Visible String", "R"},  {"20000A", "Unsigned16", "RW"},
        {"20000B", "Unsigned16", "RW"},     {"20000C", "Unsigned16", "R"},
        {"20000D", "Visible String", "RW"}, {"20000E", "Visible String", "R"},
        {"20000F", "Domain", "R"},          {"200010", "Unsigned16", "RW"},
        {"101001", "Unsigned32", "RW"},     {"101101", "Unsigned32", "RW"},
        {"100100", "Unsigned8", "R"},       {"100300", "Unsigned8", "RW"},
        {"100301", "Unsigned32", "R"},      {"2FE300", "Unsigned8", "RW"},
        {"2FE400", "Unsigned16", "RW"},     {"2FF001", "Unsigned8", "RW"},
        {"2FF002", "Unsigned8", "RW"},      {"2FF003", "Unsigned8", "RW"},
        {"2FF004", "Unsigned8", "R"},       {"2FF100", "Unsigned8", "R"},
        {"2FF500", "Unsigned32", "R"},      {"2FFB00", "Unsigned8", "RW"},
        {"2FFE00", "Unsigned8", "R"},       {"2FFF00", "Unsigned16", "W"},
        {"260100", "Unsigned16", "R"},      {"260200", "Unsigned16", "R"},
        {"260300", "Unsigned16", "R"},      {"260400", "Unsigned16", "R"},
        {"260501", "Unsigned16", "RW"},     {"260502", "Unsigned16", "RW"},
        {"260503", "Unsigned16", "RW"},     {"260504", "Unsigned16", "RW"},
        {"260600", "Unsigned8", "RW"},      {"260700", "Unsigned8", "R"},
        {"260800", "Unsigned8", "RW"},      {"260900", "Unsigned32", "R"},
        {"261001", "Unsigned16", "R"},      {"261002", "Unsigned16", "R"},
        {"261101", "Unsigned16", "R"},      {"603F00", "Unsigned16", "R"},
        {"604000", "Unsigned16", "RW"},     {"604100", "Unsigned16", "R"},
        {"605A00", "Integer16", "RW"},      {"605B00", "Integer16", "RW"},
        {"605C00", "Integer16", "RW"},      {"605D00", "Integer16", "RW"},
        {"605E00", "Integer16", "RW"},      {"606000", "Integer8", "RW"},
        {"606100", "Integer8", "R"},        {"606200", "Integer32", "R"},
        {"606300", "Integer32", "R"},       {"606400", "Integer32", "R"},
        {"606500", "Unsigned32", "RW"},     {"606600", "Unsigned16", "RW"},
        {"606700", "Unsigned32", "RW"},     {"606800", "Unsigned16", "RW"},
        {"606B00", "Integer32", "R"},       {"606C00", "Integer32", "R"},
        {"607100", "Integer16", "RW"},      {"607300", "Unsigned16", "RW"},
        {"607700", "Integer16", "R"},       {"607800", "Integer16", "R"},
        {"607900", "Unsigned32", "R"},      {"607A00", "Integer32", "RW"},
        {"607C00", "Integer32", "RW"},      {"607D01", "Integer32", "RW"},
        {"607D02", "Integer32", "RW"},      {"607E00", "Unsigned8", "RW"},
        {"607F00", "Unsigned32", "RW"},     {"608100", "Unsigned32", "RW"},
        {"608300", "Unsigned32", "RW"},     {"608400", "Unsigned32", "RW"},
        {"608500", "Unsigned32", "RW"},     {"608700", "Unsigned32", "RW"},
        {"609800", "Integer8", "RW"},       {"60C201", "Unsigned8", "RW"},
        {"60F400", "Integer32", "R"},       {"60F604", "Unsigned8", "RW"},
        {"60F605", "Unsigned16", "RW"},     {"60F60C", "Integer16", "R"},
        {"60F613", "Unsigned16", "R"},      {"60F614", "Unsigned16", "R"},
        {"60F901", "Unsigned16", "RW"},     {"60F902", "Unsigned16", "RW"},
        {"60F905", "Unsigned16", "RW"},     {"60F906", "Unsigned8", "RW"},
        {"60F916", "Integer32", "R"},       {"60FB01", "Unsigned16", "RW"},
        {"60FB02", "Unsigned16", "RW"},     {"60FB08", "Integer16", "R"},
        {"60FC00", "Integer32", "R"},       {"60FF00", "Integer32", "RW"},
        {"205001", "Unsigned8", "RW"},      {"20500A", "Unsigned16", "RW"},
        {"20500B", "Unsigned16", "RW"},     {"20500C", "Unsigned16", "R"},
        {"20500D", "Unsigned8", "R"},       {"20500E", "Integer32", "RW"},
        {"212001", "Unsigned8", "RW"},      {"212006", "Unsigned8", "RW"},
        {"213009", "Unsigned32", "RW"},     {"214001", "Unsigned8", "RW"},
        {"214004", "Unsigned32", "RW"},     {"60F608", "Integer16", "RW"},
        {"304007", "Unsigned32", "R"},      {"641003", "Unsigned32", "RW"},
        {"641009", "Unsigned16", "RW"},     {"641020", "Integer16", "R"},
        {"651003", "Unsigned16", "R"},      {"65100B", "Integer16", "R"},
        {"65100C", "Unsigned8", "RW"},
    };
    return kEntries;
}

Bytes frame(std::uint8_t id, const Eight& payload) {
    Bytes bytes{id};
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    const int sum = std::accumulate(bytes.begin(), bytes.end(), 0);
    bytes.push_back(static_cast<std::uint8_t>(-sum));
    return bytes;
}

DriveBench::DriveBench(Options options, const std::vector<Entry>& entries)
    : id_(options.id), baud_(options.baud) {
    store_.load(dictionary_file(entries));
    if (options.values.empty()) options.values = kBenchValues;
    drive_ = std::make_unique<Drive>(store_, std::move(options));
}

std::vector<Transmission> DriveBench::exchange(const Bytes& bytes, microseconds wait) {
    now_ += microseconds(bytes.size() * 10'000'000 / baud_ + 1);
    drive_->receive(bytes, now_);
    std::vector<Transmission> all = drive_->take_output();
    const microseconds end = now_ + wait;
    while (all.empty()) {
        const auto event = drive_->next_event();
        const bool more = event && *event <= end;
        now_ = more ? std::max(*event, now_) : end;
        drive_->advance(now_);
        all = drive_->take_output();
        if (!more) break;
    }
    if (!all.empty()) {
        // The line is busy until the last byte of the answer, and then quiet for a while.
        const Transmission& last = all.back();
        now_ = std::max(now_, last.at + microseconds(last.bytes.size() * 10'000'000 / baud_ + 1));
    }
    now_ += microseconds(3000);
    drive_->advance(now_);
    for (Transmission& late : drive_->take_output())
        all.push_back(std::move(late));
    return all;
}

std::optional<Eight> DriveBench::ask(const Eight& payload) {
    refusal_ = 0;
    const auto answers = exchange(frame(id_, payload));
    if (answers.size() != 1 || answers[0].bytes.size() != 10) return std::nullopt;
    const Bytes& bytes = answers[0].bytes;
    if (bytes[0] != id_ || (std::accumulate(bytes.begin(), bytes.end(), 0) & 0xFF) != 0) {
        return std::nullopt;
    }
    Eight out{};
    std::copy(bytes.begin() + 1, bytes.end() - 1, out.begin());
    if (out[0] == 0x80) {
        refusal_ = out[4] | out[5] << 8 | out[6] << 16 | static_cast<std::uint32_t>(out[7]) << 24;
    }
    return out;
}

namespace {

Eight request(std::uint8_t command, std::uint32_t key, std::uint32_t data) {
    Eight payload{command, static_cast<std::uint8_t>(key >> 8U),
                  static_cast<std::uint8_t>(key >> 16U), static_cast<std::uint8_t>(key)};
    for (std::size_t i = 0; i < 4; ++i)
        payload[4 + i] = static_cast<std::uint8_t>(data >> 8 * i);
    return payload;
}

}  // namespace

std::optional<std::uint32_t> DriveBench::read(std::uint32_t key) {
    const auto answer = ask(request(0x40, key, 0));
    if (!answer || refusal_ != 0) return std::nullopt;
    const Eight& a = *answer;
    return a[4] | a[5] << 8 | a[6] << 16 | static_cast<std::uint32_t>(a[7]) << 24;
}

bool DriveBench::write(std::uint32_t key, std::int64_t value, int size) {
    const std::uint8_t command = size == 1 ? 0x2F : size == 2 ? 0x2B : 0x23;
    const auto answer = ask(request(command, key, static_cast<std::uint32_t>(value)));
    return answer && (*answer)[0] == 0x60;
}

std::optional<std::string> DriveBench::read_text(std::uint32_t key) {
    const auto first = ask(request(0x40, key, 0));
    if (!first || (*first)[0] != 0x41) return std::nullopt;
    std::string text;
    for (bool toggle = false;; toggle = !toggle) {
        const auto segment = ask(request(toggle ? 0x70 : 0x60, key, 0));
        if (!segment || ((*segment)[0] & 0x10) != (toggle ? 0x10 : 0)) return std::nullopt;
        const std::size_t used = 7U - ((*segment)[0] >> 1U & 7U);
        text.append(segment->begin() + 1, segment->begin() + 1 + static_cast<std::ptrdiff_t>(used));
        if (((*segment)[0] & 1) != 0) return text;
    }
}

void DriveBench::control(std::uint16_t word) {
    drive_->set_value(0x604000, word);
}

void DriveBench::enable(int mode) {
    drive_->set_value(0x606000, mode);
    control(0x06);
    control(0x07);
    control(0x0F);
}

void DriveBench::run(microseconds time) {
    now_ += time;
    drive_->advance(now_);
}

}  // namespace servo::sim::test
