// The box at the end of a transfer is open for as long as its user likes: what stands while it is
// open, what falls behind it, and what may happen meanwhile.
#include "support/fakes.h"
#include "transfer_bench.h"

using namespace servo;
using namespace servo::test;

namespace {

// A box that lets somebody look, and act, while it is open.
class OpenBox final : public base::Notice {
  public:
    base::Answer show(std::string_view title, std::string_view text, base::Buttons) override {
        titles.emplace_back(title);
        texts.emplace_back(text);
        if (while_open) while_open();
        return base::Answer::kOk;
    }
    std::function<void()> while_open;
    std::vector<std::string> titles;
    std::vector<std::string> texts;
};

struct TransferBox : testing::Test, TransferBench {
    bool run(std::size_t characters) {
        if (!form.load_image(put_image(payload(characters)))) return false;
        open_link();
        engine.state.sendmod = 0;
        form.Command4_Click();
        return finish();
    }

    OpenBox open_box;
    firmware::Download form{{engine, open_box, language, brand,
                             [](const auto&) { return std::nullopt; },
                             [] { return std::string(); }}};
};

}  // namespace

TEST_F(TransferBox, SuccessIsToldBeforeAnythingIsRestored) {
    FakePage page("Basic");
    engine.add_poll_window(page);
    drive.in_bootloader = true;
    open_box.while_open = [&] {
        EXPECT_EQ(state.sendmod, 0) << "the one thing that goes before the box";
        EXPECT_EQ(state.download_active, 1);
        EXPECT_EQ(state.download_step, 9);
        EXPECT_EQ(form.data().step9_cnt, 228);
        EXPECT_EQ(form.data().ProgressBar1, 100.0);
        EXPECT_FALSE(form.data().Command1_enabled);
        EXPECT_FALSE(form.data().Command4_enabled);
        EXPECT_FALSE(page.must_fresh);
        EXPECT_EQ(timer.interval(), 6);
        EXPECT_EQ(state.InputLen, 60);
    };
    ASSERT_TRUE(form.load_image(put_image(payload(4120))));
    open_link();
    engine.state.sendmod = 0;
    form.Command4_Click();
    page.must_fresh = false;
    ASSERT_TRUE(finish());
    EXPECT_EQ(open_box.texts, std::vector<std::string>{"Download Finished!"});
    EXPECT_TRUE(page.must_fresh);
    EXPECT_EQ(form.data().ProgressBar1, 0.0);
    EXPECT_EQ(timer.interval(), 3);
}

TEST_F(TransferBox, FailureIsToldBeforeItsSelectorsFall) {
    drive.in_bootloader = true;
    drive.type = "OTHR";
    open_box.while_open = [&] {
        EXPECT_EQ(state.download_active, 1);
        EXPECT_EQ(state.download_step, 5);
        EXPECT_EQ(state.sendmod, 1);
    };
    ASSERT_TRUE(run(4120));
    EXPECT_EQ(open_box.titles, std::vector<std::string>{"Download Notice"});
    EXPECT_EQ(open_box.texts, std::vector<std::string>{"Firmware and bootloader not match!"});
    EXPECT_EQ(state.download_active, 0);
    EXPECT_EQ(state.download_step, 0);
    EXPECT_EQ(state.sendmod, 0);
}

TEST_F(TransferBox, IntervalOfAFailedEraseFallsBehindItsBox) {
    drive.in_bootloader = true;
    drive.instead = [](int, const std::string& reply) {
        return reply.starts_with("erased") ? std::optional(std::vector<TextBootloader::Piece>{})
                                           : std::nullopt;
    };
    open_box.while_open = [&] { EXPECT_EQ(timer.interval(), 50); };
    ASSERT_TRUE(run(4120));
    EXPECT_EQ(open_box.texts, std::vector<std::string>{"Erase failed!"});
    EXPECT_EQ(timer.interval(), 6);
}

TEST_F(TransferBox, SuccessMakesEveryPageOfTheListFresh) {
    std::vector<std::unique_ptr<FakePage>> pages;
    for (const std::string_view name : link::kPollWindowNames) {
        pages.push_back(std::make_unique<FakePage>(std::string(name)));
        ASSERT_TRUE(engine.add_poll_window(*pages.back()));
    }
    drive.in_bootloader = true;
    open_box.while_open = [&] {
        for (const auto& page : pages)
            page->must_fresh = false;
    };
    ASSERT_TRUE(run(4120));
    for (const auto& page : pages)
        EXPECT_TRUE(page->must_fresh) << page->name();
}

// The port can be lost, or the link closed, before the user has read the box.
TEST_F(TransferBox, LinkClosedUnderTheBoxOfASuccessStaysQuiet) {
    drive.in_bootloader = true;
    open_box.while_open = [&] { communication.Command1_Click(); };
    ASSERT_TRUE(run(4120));
    EXPECT_FALSE(port.is_open());
    EXPECT_FALSE(timer.enabled()) << "nothing to tick for";
    EXPECT_EQ(timer.interval(), 3);
    ASSERT_TRUE(form.result());
    EXPECT_EQ(form.result()->end, TransferEnd::kDone) << "it had succeeded by then";
    EXPECT_TRUE(form.data().Command1_enabled);
    EXPECT_TRUE(form.data().Command4_enabled);
}

TEST_F(TransferBox, LinkClosedUnderTheBoxOfAFailureIsTheFailure) {
    drive.in_bootloader = true;
    drive.type = "OTHR";
    open_box.while_open = [&] { communication.Command1_Click(); };
    ASSERT_TRUE(run(4120));
    EXPECT_FALSE(port.is_open());
    EXPECT_FALSE(timer.enabled());
    ASSERT_TRUE(form.result());
    EXPECT_EQ(form.result()->end, TransferEnd::kFailed);
    EXPECT_EQ(state.download_step, 0);
    EXPECT_EQ(state.sendmod, 0);
}
