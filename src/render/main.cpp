// shardles-render: draws a level set, or one of its levels, to a PNG picture
// with the editor's block pictures; also the file manager's thumbnailer.
#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Convert.h"
#include "files/FileIo.h"
#include "model/Quoted.h"
#include "render/Render.h"

namespace {

using shd::FormatId;

constexpr const char* kHelp =
    "Usage: shardles-render [--from FORM] [--level N] [--zoom Z | --size PIXELS] [--columns C] INPUT OUTPUT.png\n"
    "       shardles-render --thumbnail SIZE [--from FORM] [--level N] INPUT OUTPUT.png\n"
    "       shardles-render --version\n"
    "       shardles-render --help\n"
    "\n"
    "Draws a Shardles or Tiltbash level set as a PNG picture with the editor's\n"
    "block pictures: every level on one sheet, each with its number and the\n"
    "set's title above them, or one level alone.\n"
    "\n"
    "  --from FORM       read INPUT as FORM\n"
    "  --level N         draw level N alone\n"
    "  --zoom Z          draw each block Z times its picture's size (1 to 16; 1 if not given)\n"
    "  --size PIXELS     make the picture's longer side at most PIXELS, at the\n"
    "                    largest zoom that fits, smoothly shrunk if even zoom 1 does not\n"
    "  --columns C       levels in a row of the sheet (1 to 255; about square if not given)\n"
    "  --thumbnail SIZE  as a file manager asks: level 1 (or --level N) at most SIZE\n"
    "                    pixels on its longer side\n"
    "  --version         print the version\n"
    "  -h, --help        print this help\n"
    "  --                end of options\n"
    "\n"
    "FORM is one of myfile, oldmyfile, list, source, program or json, as for\n"
    "shardles-convert. Without --from the form follows INPUT's extension.\n"
    "INPUT - reads standard input (the form must then be named with --from) and\n"
    "OUTPUT - writes the picture to standard output.\n"
    "\n"
    "Exit status: 0 written; 1 the input was refused, it has no such level, or the\n"
    "picture could not be written; 2 the command line is wrong.\n"
    "\n"
    "See shardles-render(1) for more, and examples.\n";

int UsageError(const std::string& reason) { return shd::cli::UsageError("shardles-render", reason); }

std::optional<int> Number(std::string_view text, int low, int high) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < low || value > high) return std::nullopt;
    return value;
}

struct Option {
    std::string_view name;
    const char* needs;
    int low, high;
};
constexpr Option kNumbered[] = {{"--level", "a level N (1 to 255)", 1, 255},
                                {"--zoom", "a zoom Z (1 to 16)", 1, 16},
                                {"--size", "a size in PIXELS (1 to 16384)", 1, 16384},
                                {"--columns", "a number of columns C (1 to 255)", 1, 255},
                                {"--thumbnail", "a SIZE in pixels (1 to 16384)", 1, 16384}};

// Where the block pictures are: beside the program in a build folder, else
// where the package installs them.
QString PictureFolder() {
    const QString program = QCoreApplication::applicationDirPath();
    for (const QString& folder : {program, QDir(program).filePath(QStringLiteral("../share/shardles-editor"))})
        if (QFileInfo::exists(QDir(folder).filePath(QStringLiteral("shdblock1.gif")))) return QDir::cleanPath(folder);
    return QStringLiteral("/usr/share/shardles-editor");
}

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);
    std::optional<FormatId> from;
    std::optional<int> numbers[std::size(kNumbered)];
    std::vector<std::string> files;
    bool optionsEnded = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (optionsEnded || arg.empty() || arg[0] != '-' || arg == "-") {
            files.emplace_back(arg);
            continue;
        }
        if (arg == "--") {
            optionsEnded = true;
            continue;
        }
        if (arg == "--help" || arg == "-h") {
            std::fputs(kHelp, stdout);
            return shd::cli::Finished(shd::cli::kDone);
        }
        if (arg == "--version") {
            std::puts("shardles-render 3.0");
            return shd::cli::Finished(shd::cli::kDone);
        }
        const std::string_view name = arg.substr(0, arg.find('='));
        std::string_view value;
        if (name.size() < arg.size()) {
            value = arg.substr(name.size() + 1);
        } else if (name == "--from" || std::any_of(std::begin(kNumbered), std::end(kNumbered),
                                                   [&](const Option& o) { return o.name == name; })) {
            if (i + 1 >= argc)
                return UsageError(std::string(name) + " needs " +
                                  (name == "--from" ? "a FORM"
                                                    : std::find_if(std::begin(kNumbered), std::end(kNumbered),
                                                                   [&](const Option& o) { return o.name == name; })->needs));
            value = argv[++i];
        }
        if (name == "--from") {
            if (from) return UsageError("--from given twice");
            from = shd::FormatByName(value);
            if (!from) return UsageError("unknown form '" + shd::ShownName(value) + "'");
            continue;
        }
        bool known = false;
        for (std::size_t k = 0; k < std::size(kNumbered); ++k) {
            if (kNumbered[k].name != name) continue;
            known = true;
            if (numbers[k]) return UsageError(std::string(name) + " given twice");
            numbers[k] = Number(value, kNumbered[k].low, kNumbered[k].high);
            if (!numbers[k]) return UsageError(std::string(name) + " needs " + kNumbered[k].needs + ", not '" + shd::ShownName(value) + "'");
        }
        if (!known) return UsageError("unknown option " + shd::ShownName(arg));
    }
    auto& [level, zoom, size, columns, thumbnail] = numbers;
    if (zoom && (size || thumbnail)) return UsageError("--zoom and --size (or --thumbnail) do not go together");
    if (size && thumbnail) return UsageError("--size and --thumbnail do not go together");
    if (thumbnail && columns) return UsageError("--thumbnail draws one level, so --columns has no place");
    if (level && columns) return UsageError("--level draws one level, so --columns has no place");
    if (files.size() != 2) return UsageError("give one INPUT and one OUTPUT");
    const std::string& input = files[0];
    const std::string& output = files[1];
    if (output.empty()) return UsageError("the OUTPUT file name is empty");
    if (output.back() == '/') return UsageError(shd::ShownName(output) + " ends in /, so it names a folder, not a file");
    if (!from) from = shd::FormOfFileName(shd::FileTitleOf(input));
    if (!from)
        return UsageError(input == shd::cli::kStandardStream
                              ? std::string("the form of standard input must be named; give --from")
                              : "cannot tell the form of " + shd::ShownName(input) + " from its extension; give --from");

    // No window is ever shown, so no display is needed. Qt's own notes (a
    // missing runtime folder, say) are not about the user's file: unsaid.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "shardles-render: %s\n", qPrintable(text));
    });
    QGuiApplication application(argc, argv);

    const std::optional<shd::LevelSet> set = shd::cli::ReadInput(*from, input);
    if (!set) return shd::cli::kRefused;
    if (thumbnail) {
        size = thumbnail;
        if (!level) level = 1;
    }
    if (level && *level > set->LevelCount()) {
        std::fprintf(stderr, "%s: there is no level %d; the set has %d\n",
                     (input == shd::cli::kStandardStream ? std::string("standard input") : shd::ShownName(input)).c_str(),
                     *level, set->LevelCount());
        return shd::cli::kRefused;
    }
    const shd::render::BlockImages images(PictureFolder(), set->Kind);
    const int sheetColumns = columns ? *columns : shd::render::DefaultColumns(set->LevelCount());
    auto draw = [&](int z) {
        return level ? shd::render::DrawLevel(*set, *level, images, z) : shd::render::DrawSheet(*set, images, sheetColumns, z);
    };
    auto sizeAt = [&](int z) {
        return level ? QSize(shd::kColumns * shd::render::BlockWidth(set->Kind) * z, shd::RowCount(set->Kind) * shd::render::kBlockHeight * z)
                     : shd::render::LayOutSheet(*set, sheetColumns, z).size;
    };
    QImage image;
    if (size) {
        // The largest zoom whose picture fits; past zoom 1 only shrinking helps.
        int fitting = 1;
        while (fitting < 16) {
            const QSize next = sizeAt(fitting + 1);
            if (std::max(next.width(), next.height()) > *size) break;
            ++fitting;
        }
        image = shd::render::FitInto(draw(fitting), *size);
    } else {
        image = draw(zoom ? *zoom : 1);
    }

    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    std::string error;
    const std::string bytes = png.toStdString();
    if (output == shd::cli::kStandardStream ? shd::WriteStandardOutput(bytes, &error)
                                            : shd::WriteFileAtomic(output, bytes, &error))
        return shd::cli::kDone;
    std::fprintf(stderr, "%s%s\n", output == shd::cli::kStandardStream ? "" : (shd::ShownName(output) + ": ").c_str(),
                 error.c_str());
    return shd::cli::kRefused;
}
