// Plays a walkthrough in a test, with everything that it prints.
#pragma once

#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "app/walk_player.h"

namespace servo::app::test {

struct Played {
    int status = -1;  // -1: it did not end
    std::vector<std::string> lines;
};

inline Played play(ShellAccess& shell, std::string_view text,
                   WalkPlayer::Simulator simulator = {}) {
    Played played;
    WalkPlayer player(shell, "test.walk", parse_walk(text),
                      [&played](std::string_view line) { played.lines.emplace_back(line); });
    player.use_simulator(std::move(simulator));
    QEventLoop loop;
    QObject::connect(&player, &WalkPlayer::finished, &loop, [&](int status) {
        played.status = status;
        loop.quit();
    });
    QTimer::singleShot(30'000, &loop, &QEventLoop::quit);
    player.start();
    loop.exec();
    return played;
}

using Lines = std::vector<std::string>;

}  // namespace servo::app::test
