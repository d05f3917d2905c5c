// The reader of plain GIFs: for every picture it takes, the very image Qt's
// own reader gives; everything else it leaves to Qt.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <map>
#include <random>
#include <vector>

#include "gui/Gif.h"

namespace shd::gui::test {
namespace {

QString Assets() {
    return QFileInfo(QStringLiteral(__FILE__)).absoluteDir().absoluteFilePath(QStringLiteral("../../assets"));
}

QImage QtReads(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return QImageReader(&buffer, "gif").read();
}

QByteArray Contents(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

// A GIF writer for the tests: one image, the global colour table, LZW codes
// growing to 12 bits. When the table is full it starts over with a clear
// code, or, with `keepFullTable`, goes on with the table as it is.
struct GifShape {
    int width = 0;
    int height = 0;
    int colourBits = 1;  // the table holds 2 << (colourBits - 1) colours
    bool interlaced = false;
    bool keepFullTable = false;
    const char* signature = "GIF87a";
};

QByteArray WriteGif(const GifShape& shape, const std::vector<std::uint8_t>& indices) {
    QByteArray out(shape.signature);
    auto word = [&](int v) {
        out += static_cast<char>(v & 0xFF);
        out += static_cast<char>(v >> 8);
    };
    word(shape.width);
    word(shape.height);
    out += static_cast<char>(0x80 | (shape.colourBits - 1));
    out += '\0';
    out += '\0';
    const int colours = 1 << shape.colourBits;
    for (int i = 0; i < colours; ++i) {
        out += static_cast<char>(i * 37);
        out += static_cast<char>(255 - i);
        out += static_cast<char>(i * 11);
    }
    out += ',';
    word(0);
    word(0);
    word(shape.width);
    word(shape.height);
    out += static_cast<char>(shape.interlaced ? 0x40 : 0);

    // The pixels in the order they are stored.
    std::vector<std::uint8_t> stored;
    std::vector<int> rows;
    if (shape.interlaced) {
        for (const auto& [start, step] : {std::pair{0, 8}, {4, 8}, {2, 4}, {1, 2}})
            for (int y = start; y < shape.height; y += step) rows.push_back(y);
    } else {
        for (int y = 0; y < shape.height; ++y) rows.push_back(y);
    }
    for (const int y : rows)
        for (int x = 0; x < shape.width; ++x) stored.push_back(indices[static_cast<std::size_t>(y * shape.width + x)]);

    const int minimum = std::max(2, shape.colourBits);
    out += static_cast<char>(minimum);
    const int clear = 1 << minimum;
    QByteArray data;
    std::uint32_t bits = 0;
    int bitCount = 0;
    int codeSize = minimum + 1;
    auto put = [&](int code) {
        bits |= static_cast<std::uint32_t>(code) << bitCount;
        bitCount += codeSize;
        while (bitCount >= 8) {
            data += static_cast<char>(bits & 0xFF);
            bits >>= 8;
            bitCount -= 8;
        }
    };
    std::map<std::pair<int, int>, int> table;
    int next = clear + 2;
    put(clear);
    int current = stored.front();
    for (std::size_t i = 1; i < stored.size(); ++i) {
        const int c = stored[i];
        if (auto found = table.find({current, c}); found != table.end()) {
            current = found->second;
            continue;
        }
        put(current);
        if (next < 4096) {
            table[{current, c}] = next;
            if (next == 1 << codeSize && codeSize < 12) ++codeSize;
            ++next;
        } else if (!shape.keepFullTable) {
            put(clear);
            table.clear();
            next = clear + 2;
            codeSize = minimum + 1;
        }
        current = c;
    }
    put(current);
    put(clear + 1);
    if (bitCount > 0) data += static_cast<char>(bits & 0xFF);
    for (qsizetype at = 0; at < data.size(); at += 255) {
        const qsizetype length = std::min<qsizetype>(255, data.size() - at);
        out += static_cast<char>(length);
        out += data.mid(at, length);
    }
    out += '\0';
    out += ';';
    return out;
}

TEST(GifTest, EveryBlockPictureReadsAsQtReadsIt) {
    const QStringList files = QDir(Assets()).entryList({QStringLiteral("*.gif")});
    ASSERT_EQ(files.size(), 31);
    for (const QString& name : files) {
        const QString path = QDir(Assets()).filePath(name);
        const QImage mine = ReadPlainGif(Contents(path));
        ASSERT_FALSE(mine.isNull()) << name.toStdString();
        const QImage qt = QImageReader(path).read();
        EXPECT_EQ(mine.format(), qt.format()) << name.toStdString();
        EXPECT_EQ(mine, qt) << name.toStdString();
    }
}

TEST(GifTest, LargeImagesWithFullCodeTablesAndBothRowOrdersReadAsQtReadsThem) {
    std::mt19937 random(7);
    for (const int colourBits : {1, 2, 5, 8}) {
        for (const bool interlaced : {false, true}) {
            for (const bool keepFullTable : {false, true}) {
                GifShape shape{97, 61, colourBits, interlaced, keepFullTable, colourBits == 5 ? "GIF89a" : "GIF87a"};
                // Runs and noise, so strings grow long and the table fills.
                std::vector<std::uint8_t> indices;
                std::uniform_int_distribution<int> colour(0, (1 << colourBits) - 1);
                while (indices.size() < static_cast<std::size_t>(shape.width * shape.height)) {
                    const int c = colour(random);
                    const int run = random() % 3 == 0 ? static_cast<int>(random() % 40) : 1;
                    for (int r = 0; r < run; ++r) indices.push_back(static_cast<std::uint8_t>(c));
                }
                indices.resize(static_cast<std::size_t>(shape.width * shape.height));
                const QByteArray gif = WriteGif(shape, indices);
                SCOPED_TRACE(testing::Message() << colourBits << " bits, interlaced " << interlaced << ", full table kept "
                                                << keepFullTable);
                const QImage mine = ReadPlainGif(gif);
                ASSERT_FALSE(mine.isNull());
                EXPECT_EQ(mine, QtReads(gif));
                // The colour of every pixel, straight from the table.
                for (int y = 0; y < shape.height; y += 7)
                    for (int x = 0; x < shape.width; x += 5) {
                        const int i = indices[static_cast<std::size_t>(y * shape.width + x)];
                        EXPECT_EQ(mine.pixel(x, y), qRgb(i * 37 & 0xFF, 255 - i, i * 11 & 0xFF)) << x << "," << y;
                    }
            }
        }
    }
}

// Whatever it is given, the reader either leaves the file to Qt or reads
// exactly what Qt reads, and never reads past the end.
TEST(GifTest, CutAndDamagedFilesAreLeftToQtOrReadAsQtReadsThem) {
    std::vector<QByteArray> originals;
    for (const QString& name : QDir(Assets()).entryList({QStringLiteral("*.gif")}))
        originals.push_back(Contents(QDir(Assets()).filePath(name)));
    std::vector<std::uint8_t> indices(40 * 30);
    for (std::size_t i = 0; i < indices.size(); ++i) indices[i] = static_cast<std::uint8_t>((i * 7 + i / 40) % 16);
    originals.push_back(WriteGif({40, 30, 4, false, false, "GIF89a"}, indices));

    int taken = 0, left = 0;
    auto check = [&](const QByteArray& bytes) {
        // A copy of exactly this size, so reading past it shows under the sanitizers.
        const QByteArray exact(bytes.constData(), bytes.size());
        const QImage mine = ReadPlainGif(exact);
        if (mine.isNull()) {
            ++left;
            return;
        }
        ++taken;
        EXPECT_EQ(mine, QtReads(exact)) << bytes.toHex().toStdString();
    };
    for (const QByteArray& original : originals) {
        for (qsizetype length = 0; length < original.size(); ++length) check(original.left(length));
        for (qsizetype at = 0; at < original.size(); ++at)
            for (const char flip : {'\x01', '\x10', '\x80', '\xFF'}) {
                QByteArray damaged = original;
                damaged[at] = static_cast<char>(damaged[at] ^ flip);
                check(damaged);
            }
    }
    EXPECT_GT(taken, 0);
    EXPECT_GT(left, 0);

    // A header claiming far more pixels than its few bytes of data could
    // give is left to Qt without making room for the claim.
    QByteArray giant = WriteGif({40, 30, 4, false, false, "GIF89a"}, indices);
    constexpr int kDescriptor = 13 + 3 * 16;  // after the header and 16 colours
    for (const int at : {6, 8, kDescriptor + 5, kDescriptor + 7}) giant[at] = giant[at + 1] = '\xFF';  // both sizes
    EXPECT_TRUE(ReadPlainGif(giant).isNull());
}

}  // namespace
}  // namespace shd::gui::test
