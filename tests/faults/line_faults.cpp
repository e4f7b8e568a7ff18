#include "faults/line_faults.h"

#include <numeric>
#include <string_view>

namespace servo::test {

namespace {

using Pieces = std::vector<Piece>;
using Random = std::mt19937_64;
using Apply = std::function<Pieces(const Bytes&, const Bytes&, Random&)>;
using std::chrono::microseconds;
using std::chrono::milliseconds;

Bytes flipped(Bytes frame, std::size_t byte, unsigned bit) {
    frame[byte] = static_cast<std::uint8_t>(frame[byte] ^ (1U << bit));
    return frame;
}

Bytes joined(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

Bytes text(std::string_view characters) {
    return {characters.begin(), characters.end()};
}

Pieces nothing() {
    return {};
}
Pieces one(Bytes bytes) {
    return {{microseconds(0), std::move(bytes)}};
}

class Catalogue {
  public:
    std::vector<LineFault> faults;

    void add(std::string name, Apply apply) {
        faults.push_back({std::move(name), false, 1, {}, std::move(apply)});
    }
    void add_passing(std::string name, Apply apply) {
        faults.push_back({std::move(name), true, 1, {}, std::move(apply)});
    }
    void add_burst(std::string name, int frames, Apply apply) {
        faults.push_back({std::move(name), false, frames, {}, std::move(apply)});
    }
    void add_dead(std::string name, milliseconds dead, Apply apply) {
        faults.push_back({std::move(name), false, 1, dead, std::move(apply)});
    }
};

void add_flips(Catalogue& c) {
    for (std::size_t byte = 0; byte < 10; ++byte) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            c.add("bit " + std::to_string(bit) + " of byte " + std::to_string(byte) + " flipped",
                  [byte, bit](const Bytes& f, const Bytes&, Random&) {
                      return one(flipped(f, byte, bit));
                  });
        }
    }
}

void add_lengths(Catalogue& c) {
    for (std::ptrdiff_t length = 1; length <= 9; ++length) {
        c.add_passing("truncated to " + std::to_string(length) + " bytes",
                      [length](const Bytes& f, const Bytes&, Random&) {
                          return one({f.begin(), f.begin() + length});
                      });
    }
    c.add_passing("byte lost at any place", [](const Bytes& f, const Bytes&, Random& random) {
        Bytes short_frame = f;
        short_frame.erase(short_frame.begin() + static_cast<std::ptrdiff_t>(random() % 10));
        return one(short_frame);
    });
    c.add_passing("byte doubled at any place", [](const Bytes& f, const Bytes&, Random& random) {
        Bytes long_frame = f;
        const auto place = static_cast<std::ptrdiff_t>(random() % 10);
        long_frame.insert(long_frame.begin() + place, f[static_cast<std::size_t>(place)]);
        return one(long_frame);
    });
    c.add_passing(
        "foreign byte inserted at any place", [](const Bytes& f, const Bytes&, Random& random) {
            Bytes long_frame = f;
            long_frame.insert(long_frame.begin() + static_cast<std::ptrdiff_t>(random() % 11),
                              static_cast<std::uint8_t>(random()));
            return one(long_frame);
        });
    c.add_passing("cut in the middle, the rest 4 ms later",
                  [](const Bytes& f, const Bytes&, Random&) {
                      return Pieces{{microseconds(0), {f.begin(), f.begin() + 5}},
                                    {milliseconds(4), {f.begin() + 5, f.end()}}};
                  });
}

void add_losses(Catalogue& c) {
    c.add("lost", [](const Bytes&, const Bytes&, Random&) { return nothing(); });
    c.add_burst("three lost in a row", 3,
                [](const Bytes&, const Bytes&, Random&) { return nothing(); });
    c.add_burst("twenty lost in a row", 20,
                [](const Bytes&, const Bytes&, Random&) { return nothing(); });
    c.add("doubled", [](const Bytes& f, const Bytes&, Random&) { return one(joined(f, f)); });
    c.add("doubled, the second 5 ms later", [](const Bytes& f, const Bytes&, Random&) {
        return Pieces{{microseconds(0), f}, {milliseconds(5), f}};
    });
    c.add("three times",
          [](const Bytes& f, const Bytes&, Random&) { return one(joined(joined(f, f), f)); });
    for (const int late : {1, 3, 6, 20, 100}) {
        c.add("late by " + std::to_string(late) + " ms",
              [late](const Bytes& f, const Bytes&, Random&) {
                  return Pieces{{milliseconds(late), f}};
              });
    }
}

void add_strangers(Catalogue& c) {
    c.add("foreign ID with a right checksum", [](const Bytes& f, const Bytes&, Random& random) {
        Bytes frame = f;
        frame[0] = static_cast<std::uint8_t>(frame[0] + 1 + random() % 255);
        return one(with_checksum(frame));
    });
    c.add("foreign ID with a wrong checksum", [](const Bytes& f, const Bytes&, Random&) {
        Bytes frame = f;
        frame[0] ^= 0x55U;
        return one(frame);
    });
    c.add("foreign station before the frame", [](const Bytes& f, const Bytes& other, Random&) {
        Bytes stranger = other;
        stranger[0] = 0x11;
        return one(joined(with_checksum(stranger), f));
    });
    c.add("unknown key with a right checksum", [](const Bytes& f, const Bytes&, Random&) {
        Bytes frame = f;
        frame[2] = 0x0F;
        frame[3] = 0x0F;
        return one(with_checksum(frame));
    });
    c.add_passing("key of another object with a right checksum",
                  [](const Bytes& f, const Bytes& other, Random&) {
                      Bytes frame = f;
                      for (std::size_t i = 2; i <= 4; ++i)
                          frame[i] = other[i];
                      return one(with_checksum(frame));
                  });
    c.add("echo of the request before the answer", [](const Bytes& f, const Bytes&, Random&) {
        Bytes echo = f;
        echo[1] = 0x40;
        for (std::size_t i = 5; i < 9; ++i)
            echo[i] = 0;
        return one(joined(with_checksum(echo), f));
    });
    c.add("echo of the request in place of the answer", [](const Bytes& f, const Bytes&, Random&) {
        Bytes echo = f;
        echo[1] = 0x40;
        for (std::size_t i = 5; i < 9; ++i)
            echo[i] = 0;
        return one(with_checksum(echo));
    });
    c.add("abort in place of the frame", [](const Bytes& f, const Bytes&, Random&) {
        Bytes frame = f;
        frame[1] = 0x80;
        return one(with_checksum(frame));
    });
}

void add_noise(Catalogue& c) {
    c.add("checksum off by one", [](const Bytes& f, const Bytes&, Random&) {
        Bytes frame = f;
        ++frame[9];
        return one(frame);
    });
    c.add("burst of one to eight bits", [](const Bytes& f, const Bytes&, Random& random) {
        const unsigned width = 1 + random() % 8;
        const unsigned start = random() % (80 - width);
        Bytes frame = f;
        for (unsigned bit = start; bit < start + width; ++bit)
            if (bit == start || random() % 2 != 0) frame = flipped(frame, bit / 8, bit % 8);
        return one(frame);
    });
    c.add_burst("four frames in a row with a flipped bit", 4,
                [](const Bytes& f, const Bytes&, Random& random) {
                    return one(flipped(f, random() % 10, random() % 8));
                });
    c.add_passing("two neighbouring bytes exchanged",
                  [](const Bytes& f, const Bytes&, Random& random) {
                      Bytes frame = f;
                      const std::size_t place = 1 + random() % 8;
                      std::swap(frame[place], frame[place + 1]);
                      return one(frame);
                  });
    c.add_passing("two flips that cancel out in the sum",
                  [](const Bytes& f, const Bytes&, Random& random) {
                      Bytes frame = f;
                      frame[5 + random() % 4] += 16;
                      frame[9] -= 16;
                      return one(frame);
                  });
    c.add_passing("random data with a right checksum",
                  [](const Bytes& f, const Bytes&, Random& random) {
                      Bytes frame = f;
                      for (std::size_t i = 5; i < 9; ++i)
                          frame[i] = static_cast<std::uint8_t>(random());
                      return one(with_checksum(frame));
                  });
    c.add("ten random bytes", [](const Bytes&, const Bytes&, Random& random) {
        Bytes noise(10);
        for (std::uint8_t& byte : noise)
            byte = static_cast<std::uint8_t>(random());
        return one(noise);
    });
    c.add("all bytes zero", [](const Bytes&, const Bytes&, Random&) { return one(Bytes(10, 0)); });
    c.add("all bytes ones",
          [](const Bytes&, const Bytes&, Random&) { return one(Bytes(10, 0xFF)); });
    c.add("break: one zero byte in place of the frame",
          [](const Bytes&, const Bytes&, Random&) { return one(Bytes{0}); });
    c.add("hundred random bytes before the frame",
          [](const Bytes& f, const Bytes&, Random& random) {
              Bytes noise(100);
              for (std::uint8_t& byte : noise)
                  byte = static_cast<std::uint8_t>(random());
              return one(joined(noise, f));
          });
}

void add_texts(Catalogue& c) {
    c.add("text of a bootloader in place of the frame", [](const Bytes&, const Bytes&, Random&) {
        return one(text("drive bootloader 1.2\r\n"));
    });
    c.add("ten characters with a wrong checksum",
          [](const Bytes&, const Bytes&, Random&) { return one(text("0123456789")); });
    c.add("ten characters with a right checksum", [](const Bytes&, const Bytes&, Random&) {
        return one(with_checksum(text("programme.")));
    });
    c.add("text behind the right ID with a right checksum",
          [](const Bytes& f, const Bytes&, Random&) {
              Bytes frame = text(".right...,");
              frame[0] = f[0];
              return one(with_checksum(frame));
          });
    c.add("text between two frames",
          [](const Bytes& f, const Bytes&, Random&) { return one(joined(text("ok\r\n"), f)); });
}

void add_plugs(Catalogue& c) {
    for (std::ptrdiff_t bytes = 0; bytes <= 9; ++bytes) {
        c.add_dead("unplugged behind byte " + std::to_string(bytes) + ", for 40 ms",
                   milliseconds(40), [bytes](const Bytes& f, const Bytes&, Random&) {
                       return one({f.begin(), f.begin() + bytes});
                   });
    }
    c.add_dead("unplugged for 300 ms", milliseconds(300),
               [](const Bytes& f, const Bytes&, Random&) { return one(f); });
}

}  // namespace

Bytes with_checksum(Bytes frame) {
    const int sum = std::accumulate(frame.begin(), frame.begin() + 9, 0);
    frame[9] = static_cast<std::uint8_t>(-sum);
    return frame;
}

const std::vector<LineFault>& line_faults() {
    static const std::vector<LineFault> faults = [] {
        Catalogue c;
        add_flips(c);
        add_lengths(c);
        add_losses(c);
        add_strangers(c);
        add_noise(c);
        add_texts(c);
        add_plugs(c);
        return c.faults;
    }();
    return faults;
}

}  // namespace servo::test
