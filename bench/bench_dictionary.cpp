// The dictionary of 3,000 records: loading it, and finding its last record.
#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "base/gbk.h"
#include "base/number.h"
#include "bench/ratio.h"
#include "dictionary/store.h"

namespace {

using servo::dictionary::Identity;
using servo::dictionary::kRecordSize;
using servo::dictionary::Store;

constexpr int kRecords = 3000;
constexpr int kFirstIndex = 0x2000;

constexpr std::size_t kWidths[] = {4, 2, 64, 64, 16, 8, 4096, 4096, 200, 4};

void add(std::string& out, std::string_view text, std::size_t width) {
    const std::string bytes = servo::base::utf8_to_gbk(text);
    out.append(bytes, 0, width).append(width - std::min(width, bytes.size()), ' ');
}

// Records as the real file holds them: names, a help text of a few lines with an item list in both
// languages, a formula.
std::string make_file() {
    std::string out;
    for (int i = 0; i < kRecords; ++i) {
        std::string help = "驱动器对象的说明，第一行给出用途，第二行给出单位和范围。";
        std::string help_en = "What the object is for, its unit and its range. ";
        for (int n = 0; n < 4; ++n) {
            help += fmt::format("|{}:第{}项", n, n);
            help_en += fmt::format("|{}:item {}", n, n);
        }
        const std::string fields[] = {
            fmt::format("{:04X}", kFirstIndex + i),
            "00",
            fmt::format("对象{}的名称", i),
            fmt::format("Name of object {}", i),
            "Integer32",
            "HW",
            help,
            help_en,
            "[DEC rpm]N*1875/512/[64100320]\n[rpm DEC]N/1875*512*[64100320]",
            fmt::format("{:04X}", i)};
        for (std::size_t field = 0; field < std::size(kWidths); ++field) {
            add(out, fields[field], kWidths[field]);
        }
    }
    return out;
}

// A folder with the file in it, gone afterwards.
class Folder {
  public:
    Folder() {
        std::string name = (std::filesystem::temp_directory_path() / "servo-bench-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) std::exit(1);
        path_ = name;
        std::ofstream(file(), std::ios::binary) << make_file();
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path file() const { return path_ / "Servo.dat"; }

  private:
    std::filesystem::path path_;
};

using Row = std::vector<std::string>;

// The plain way in: a stream, and a string for every field.
std::vector<Row> read_with_stream(const std::filesystem::path& file) {
    std::vector<Row> rows;
    std::ifstream in(file, std::ios::binary);
    std::string record(kRecordSize, '\0');
    while (in.read(record.data(), kRecordSize)) {
        Row& row = rows.emplace_back();
        std::size_t at = 0;
        for (const std::size_t width : kWidths) {
            const std::string_view field = std::string_view(record).substr(at, width);
            row.push_back(servo::base::gbk_to_utf8(field));
            at += width;
        }
    }
    return rows;
}

// The plain look-up: the text of every slot is parsed until one matches.
std::size_t scan(const std::vector<Row>& rows, Identity wanted) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (servo::base::leading_number("&H" + rows[i][0] + rows[i][1]) == wanted) return i;
    }
    return rows.size();
}

void measure_load(const Folder& folder, servo::bench::Report& report) {
    const auto ours = [&] {
        Store fresh;
        fresh.open_dat(folder.path());
        benchmark::DoNotOptimize(fresh.count());
    };
    const auto reference = [&] {
        benchmark::DoNotOptimize(read_with_stream(folder.file()).size());
    };
    // A program loads its dictionary once, at its start, into memory that it has to ask for first.
    const auto cold = servo::bench::take_turns(15, ours, 1, reference, 1, [] { malloc_trim(0); });
    std::printf("load: %.2f ms, stream and strings: %.2f ms\n", cold.ours * 1e3,
                cold.reference * 1e3);
    report.at_most("dictionary-load", cold.ours / cold.reference, 0.3);
    const auto warm = servo::bench::take_turns(15, ours, 1, reference, 1);
    std::printf("again in the same memory: %.2f ms, stream and strings: %.2f ms, %.3g (no limit)\n",
                warm.ours * 1e3, warm.reference * 1e3, warm.ours / warm.reference);
}

bool measure_lookup(const Folder& folder, const Store& store, servo::bench::Report& report) {
    const std::vector<Row> rows = read_with_stream(folder.file());
    const Identity last = (kFirstIndex + kRecords - 1) << 8;
    if (scan(rows, last) != kRecords - 1 || store.find(last) != kRecords - 1) return false;
    const auto reference = [&] { benchmark::DoNotOptimize(scan(rows, last)); };
    const auto found = servo::bench::take_turns(
        25, [&] { benchmark::DoNotOptimize(store.find(last)); }, 100000, reference, 20);
    std::printf("look-up: %.1f ns, scan: %.1f us\n", found.ours * 1e9, found.reference * 1e6);
    report.at_least("dictionary-lookup", found.reference / found.ours, 500);
    // The scan only finds its row; making the eight texts of a record costs more than finding it.
    const auto record = servo::bench::take_turns(
        25, [&] { benchmark::DoNotOptimize(store.get_record(last)); }, 2000, reference, 20);
    std::printf("look-up and texts of the record: %.1f ns, %.4g times faster (no limit)\n",
                record.ours * 1e9, record.reference / record.ours);
    return true;
}

}  // namespace

int main() {
    const Folder folder;
    servo::bench::Report report;

    Store store;
    if (!store.open_dat(folder.path()) || store.count() != kRecords) return 1;

    measure_load(folder, report);
    if (!measure_lookup(folder, store, report)) return 1;
    return report.exit_status();
}
