// Times drawing a 255-level sheet with every block picture, as
// shardles-render and Export Picture draw it. Prints the median of RUNS
// drawings in seconds and fails when it is over LIMIT (default 0.5 s).
// Usage: sheet_bench PICTURE_FOLDER [RUNS] [LIMIT]
#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "render/Render.h"

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: sheet_bench PICTURE_FOLDER [RUNS] [LIMIT]\n", stderr);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const int runs = argc > 2 ? std::max(1, std::atoi(argv[2])) : 11;
    const double limit = argc > 3 ? std::atof(argv[3]) : 0.5;

    // The largest set there is: 255 Shardles levels of every code, custom pictures on.
    shd::LevelSet set = shd::NewSet(shd::GameKind::Shardles);
    shd::MakeLevels(set, shd::kMaxLevels);
    set.UseCustomShardles = true;
    set.CustomShardlePicture.at(1) = set.CustomChangerPicture.at(60) = 1;
    for (int level = 1; level <= set.LevelCount(); ++level)
        for (std::size_t i = 0; i < set.Layout(level).Cells.size(); ++i)
            set.Layout(level).Cells[i] = static_cast<std::uint8_t>((i * 7 + static_cast<std::size_t>(level)) % 16);
    const shd::render::BlockImages images(QString::fromLocal8Bit(argv[1]), set.Kind);
    std::vector<double> seconds;
    for (int run = 0; run < runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        const QImage sheet = shd::render::DrawSheet(set, images, shd::render::DefaultColumns(set.LevelCount()), 1);
        seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        if (sheet.isNull()) return 1;
    }
    std::sort(seconds.begin(), seconds.end());
    const double median = seconds[seconds.size() / 2];
    std::printf("255-level sheet: median %.3f s, fastest %.3f s over %d runs (limit %.2f s)\n", median, seconds.front(),
                runs, limit);
    return median <= limit ? 0 : 1;
}
