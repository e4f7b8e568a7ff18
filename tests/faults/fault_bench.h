// A page of known objects over a line with faults, and the judge that looks at every value the page
// is told.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "faults/faulty_wire.h"
#include "support/fake_drive.h"
#include "support/virtual_bench.h"

namespace servo::test {

// Rows of every numeric type; tells each value to whoever judges.
class WatchedPage final : public link::PollWindow {
  public:
    struct Row {
        std::string number;
        std::string index;
        std::string type;
        link::Identity object;
        link::WireKey key;
        std::string value;
    };

    WatchedPage();
    bool custom() const override { return false; }
    int rows() const override { return static_cast<int>(grid.size()); }
    link::PollRow row(int row) const override;
    void set_value(int row, double value, int size_code) override;
    void set_text(int row, std::string_view text) override;

    std::vector<Row> grid;
    std::function<void(const Row& row, double value)> judge;
};

class FaultBench {
  public:
    explicit FaultBench(std::uint64_t seed);

    // Opens the link and lets the page fill.
    void start();
    // Every cell shows what the drive holds.
    bool page_is_right() const;
    // Empties the cells and counts the ticks until all are right again; -1 when they never are.
    int ticks_until_right(int limit);
    // Writes another value to one of the rows, as an edit would.
    void edit(std::mt19937_64& random);

    VirtualBench bench;
    FakeDrive drive{bench.time, bench.line};
    WatchedPage page;
    FaultyWire answers;
    FaultyWire requests;

    std::uint64_t told = 0;       // values that the page was told
    std::uint64_t wrong = 0;      // of these, neither what the object holds nor what it held lately
    std::uint64_t unseeable = 0;  // of the wrong, those in a frame that passes ID and checksum but
                                  // never left the drive like that
    std::uint64_t strange_writes = 0;  // values in the drive that nobody wrote
    std::uint64_t forged = 0;  // requests that the drive took and that nobody sent like that
    std::string first_wrong;

  private:
    void judge(const WatchedPage::Row& row, double value);
    void remember();

    // What each object has held, with the time until which an answer may still say so.
    std::map<link::Identity, std::deque<std::pair<VirtualTime::Duration, std::int64_t>>> held_;
    std::map<link::Identity, std::vector<std::int64_t>> written_;
};

}  // namespace servo::test
