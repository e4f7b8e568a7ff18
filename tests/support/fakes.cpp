#include "support/fakes.h"

#include "base/number.h"

namespace servo::test {

FakePage& FakePage::add_rows(int count) {
    for (int i = 0; i < count; ++i)
        add(base::hex_text(0x300000 + i * 0x100), "uint16");
    return *this;
}

}  // namespace servo::test
