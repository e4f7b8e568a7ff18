// Replies as lines deliver them: in pieces, among noise, late, doubled.
#include "transfer_bench.h"

using namespace servo;
using namespace servo::test;

namespace {

using Pieces = std::vector<TextBootloader::Piece>;

struct Replies : testing::Test {
    // A transfer of two blocks in which every reply for which `change` has an answer is replaced.
    struct Run : TransferBench {
        Run(std::function<std::optional<Pieces>(int, const std::string&)> change,
            bool in_bootloader = true) {
            load(4120 * 2);
            drive.in_bootloader = in_bootloader;
            drive.instead = std::move(change);
            start();
            over = finish();
        }
        bool done() const { return over && ended() == TransferEnd::kDone && drive.stored == image; }
        bool over = false;
        std::string image = payload(4120 * 2);
    };
    static const std::vector<std::string>& phrases() {
        static const std::vector<std::string> kAll{" bootloader", "right", "erased success",
                                                   "switch to block r", "programme"};
        return kAll;
    }
    // Each reply with its turn: banner, type, erase, switch, block.
    static std::string said(std::size_t turn) {
        static const std::vector<std::string> kAll{
            "ZARN bootloader V1.0\r\n", "type right\r\n", "erased success\r\n",
            "switch to block receive mode\r\n", "programmed\r\n"};
        return kAll.at(turn);
    }
};

}  // namespace

TEST_F(Replies, SplitAtEveryPositionAreRecognised) {
    int runs = 0;
    for (std::size_t turn = 0; turn < phrases().size(); ++turn) {
        const std::string text = said(turn);
        for (std::size_t cut = 0; cut <= text.size(); ++cut) {
            Run run([&](int, const std::string& reply) {
                return reply == text ? std::optional(Pieces{{{}, text.substr(0, cut)},
                                                            {40ms, text.substr(cut)}})
                                     : std::nullopt;
            });
            EXPECT_TRUE(run.done()) << text << " cut at " << cut;
            ++runs;
        }
    }
    EXPECT_EQ(runs, 97);
}

TEST_F(Replies, SplitAsBootAndLoaderInTwoTicksAreRecognised) {
    Run run([](int, const std::string& reply) {
        return reply.find("bootloader") != std::string::npos
                   ? std::optional(Pieces{{{}, " boot"}, {12ms, "loader"}})
                   : std::nullopt;
    });
    EXPECT_TRUE(run.done());
}

TEST_F(Replies, EveryCharacterMayComeAlone) {
    Run run([](int, const std::string& reply) {
        Pieces pieces;
        for (const char c : reply)
            pieces.push_back({7ms, std::string(1, c)});
        return std::optional(pieces);
    });
    EXPECT_TRUE(run.done());
}

TEST_F(Replies, NoiseAroundThePhraseIsIgnored) {
    for (const std::string& noise : {std::string("x"), std::string("\0\xFF\x7F", 3),
                                     std::string(500, 'z'), std::string("hi\rw\rgo\r")}) {
        Run run([&](int, const std::string& reply) {
            return std::optional(Pieces{{{}, noise}, {{}, reply}, {{}, noise}});
        });
        EXPECT_TRUE(run.done()) << noise.size();
    }
}

TEST_F(Replies, LineBreakIsNotNeeded) {
    Run run([](int, const std::string& reply) {
        return std::optional(Pieces{{{}, reply.substr(0, reply.find('\r'))}});
    });
    EXPECT_TRUE(run.done());
}

TEST_F(Replies, BannerNeedsItsLeadingBlank) {
    Run run([](int, const std::string& reply) {
        return reply.find("bootloader") != std::string::npos
                   ? std::optional(Pieces{{{}, "bootloader V1.0\r\n"}})
                   : std::nullopt;
    });
    EXPECT_EQ(run.ended(), TransferEnd::kFailed);
    EXPECT_EQ(run.box().second, "Shake hands with no response!");
}

TEST_F(Replies, PhrasesAreCaseSensitive) {
    for (std::size_t turn = 0; turn < phrases().size(); ++turn) {
        Run run([&](int, const std::string& reply) {
            std::string capitals = reply;
            for (char& c : capitals)
                c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
            return reply == said(turn) ? std::optional(Pieces{{{}, capitals}}) : std::nullopt;
        });
        EXPECT_EQ(run.ended(), TransferEnd::kFailed) << said(turn);
    }
}

TEST_F(Replies, PhraseWithOneCharacterMissingFails) {
    int runs = 0;
    for (std::size_t turn = 0; turn < phrases().size(); ++turn) {
        const std::string& phrase = phrases()[turn];
        for (std::size_t i = 0; i < phrase.size(); ++i) {
            std::string damaged = phrase;
            damaged.erase(i, 1);
            // What is left may still hold it: one of two equal characters side by side.
            if ((said(turn) + damaged).find(phrase, said(turn).size()) != std::string::npos)
                continue;
            if (damaged == phrase) continue;
            Run run([&](int, const std::string& reply) {
                return reply == said(turn) ? std::optional(Pieces{{{}, damaged}}) : std::nullopt;
            });
            EXPECT_EQ(run.ended(), TransferEnd::kFailed) << damaged;
            ++runs;
        }
    }
    EXPECT_EQ(runs, 56);
}

TEST_F(Replies, DoubledRepliesDoNoHarm) {
    Run run([](int, const std::string& reply) {
        return std::optional(Pieces{{{}, reply + reply}});
    });
    EXPECT_TRUE(run.done());
}

TEST_F(Replies, DoubledReplyThatComesLaterIsTakenForTheNextOne) {
    // Half a second after the first "programmed" the next block is on the line. Its acknowledgement
    // is believed too early; the words still arrive in their order, so the image is whole.
    Run run([](int, const std::string& reply) {
        return reply.starts_with("programmed") ? std::optional(Pieces{{{}, reply}, {500ms, reply}})
                                               : std::nullopt;
    });
    EXPECT_TRUE(run.over);
    EXPECT_EQ(run.drive.stored, run.image);
}

TEST_F(Replies, PhraseOfAnotherStepIsIgnored) {
    Run run([](int, const std::string& reply) {
        return reply.starts_with("switch")
                   ? std::optional(Pieces{{{}, "erased success right programmed bootloader "},
                                          {100ms, reply}})
                   : std::nullopt;
    });
    EXPECT_TRUE(run.done());
}

namespace {

class Late : public testing::TestWithParam<int> {};

}  // namespace

// The step listens on as many ticks as its limit; a reply that is there on the last of them is
// heard, one that comes behind it is not.
TEST_P(Late, ReplyIsHeardOnTheLastTickOfItsStepAndNotBehindIt) {
    const int step = GetParam();
    const std::map<int, std::string> replies{{3, "ZARN bootloader V1.0\r\n"},
                                             {5, "right"},
                                             {6, "erased success"},
                                             {7, "switch to block r"},
                                             {8, "programme"}};
    const std::map<int, int> limits{{3, 300}, {5, 280}, {6, 280}, {7, 258}, {8, 258}};
    for (const bool in_time : {true, false}) {
        TransferBench bench;
        bench.drive.instead = [](int, const std::string&) { return Pieces{}; };
        bench.load(4120);
        bench.start();
        bench.line.to_pc.set_baud(10'000'000);  // a reply is there before the next tick
        int answered = 0;
        ASSERT_TRUE(bench.run_until([&] {
            const int now = bench.state.download_step;
            if (bench.state.sendmod == 0) return false;
            if (now == step) return true;
            if (answered != now && replies.contains(now)) bench.drive.say(replies.at(now));
            answered = now;
            return false;
        }));
        // The send tick has just run; as many ticks listen as the limit says.
        bench.run_ticks(limits.at(step) - (in_time ? 1 : 0));
        ASSERT_EQ(bench.state.download_step, step);
        bench.drive.say(replies.at(step));
        bench.run_ticks(1);
        if (in_time) {
            EXPECT_NE(bench.state.download_step, step);
            EXPECT_TRUE(bench.notice.boxes.empty());
        } else if (step == 3) {
            EXPECT_EQ(bench.state.download_step, 4);
        } else {
            EXPECT_EQ(bench.state.download_active, 0);
            EXPECT_EQ(bench.notice.boxes.size(), 1U);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Steps, Late, testing::Values(3, 5, 6, 7, 8),
                         testing::PrintToStringParamName());

TEST_F(Replies, BannerThatComesBehindStepThreeIsHeardInStepFour) {
    TransferBench bench;
    bench.load(4120);
    bench.drive.in_bootloader = true;
    bench.drive.instead = [](int turn, const std::string& reply) {
        return turn == 0 ? std::optional(Pieces{{2000ms, reply}}) : std::nullopt;
    };
    bench.start();
    // The frame that step 4 sends is ten bytes of noise to a bootloader; with the type word behind
    // it, that line is not understood.
    ASSERT_TRUE(bench.finish());
    EXPECT_EQ(bench.ended(), TransferEnd::kFailed);
    EXPECT_EQ(bench.box().second, "Firmware and bootloader not match!");
    EXPECT_FALSE(bench.drive.erased);
}
