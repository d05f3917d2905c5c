#include "gui/Gif.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

namespace shd::gui {

namespace {
constexpr int kMaxCodes = 4096;  // 12-bit codes

class Reader {
public:
    explicit Reader(const QByteArray& bytes)
        : data_(reinterpret_cast<const std::uint8_t*>(bytes.constData())), size_(static_cast<std::size_t>(bytes.size())) {}
    bool Has(std::size_t n) const { return size_ - at_ >= n; }
    std::uint8_t Byte() { return data_[at_++]; }
    int Word() {
        const int low = data_[at_], high = data_[at_ + 1];
        at_ += 2;
        return low | high << 8;
    }
    const std::uint8_t* Take(std::size_t n) {
        const std::uint8_t* p = data_ + at_;
        at_ += n;
        return p;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

// The image data's sub-blocks as one run of bytes; false if they do not end.
bool GatherData(Reader& in, std::vector<std::uint8_t>& out) {
    for (;;) {
        if (!in.Has(1)) return false;
        const std::size_t length = in.Byte();
        if (length == 0) return true;
        if (!in.Has(length)) return false;
        const std::uint8_t* block = in.Take(length);
        out.insert(out.end(), block, block + length);
    }
}

// Decodes exactly `count` colour indices; false on anything out of order.
bool Decompress(const std::vector<std::uint8_t>& data, int minimumCodeSize, int colours, std::vector<std::uint8_t>& out,
                std::size_t count) {
    const int clear = 1 << minimumCodeSize;
    const int end = clear + 1;
    std::array<std::uint16_t, kMaxCodes> prefix{};
    std::array<std::uint8_t, kMaxCodes> suffix{};
    std::array<std::uint8_t, kMaxCodes> first{};  // each code's first index
    std::array<std::uint8_t, kMaxCodes> stack{};
    for (int c = 0; c < clear; ++c) suffix[static_cast<std::size_t>(c)] = first[static_cast<std::size_t>(c)] = static_cast<std::uint8_t>(c);

    int codeSize = minimumCodeSize + 1;
    int next = clear + 2;
    int previous = -1;
    std::uint32_t bits = 0;
    int bitCount = 0;
    std::size_t byte = 0;
    out.clear();
    out.reserve(count);
    for (;;) {
        while (bitCount < codeSize) {
            if (byte == data.size()) return false;  // no end code
            bits |= static_cast<std::uint32_t>(data[byte++]) << bitCount;
            bitCount += 8;
        }
        const int code = static_cast<int>(bits & ((1u << codeSize) - 1));
        bits >>= codeSize;
        bitCount -= codeSize;

        if (code == clear) {
            codeSize = minimumCodeSize + 1;
            next = clear + 2;
            previous = -1;
            continue;
        }
        if (code == end) return out.size() == count;
        if (code > next || (code == next && previous < 0) || (code == next && next == kMaxCodes)) return false;

        // Unwind the code's string, last index first.
        std::size_t depth = 0;
        int c = code;
        if (code == next) {  // the string of `previous` and its own first index
            stack[depth++] = first[static_cast<std::size_t>(previous)];
            c = previous;
        }
        while (c >= clear) {
            stack[depth++] = suffix[static_cast<std::size_t>(c)];
            c = prefix[static_cast<std::size_t>(c)];
        }
        stack[depth++] = static_cast<std::uint8_t>(c);
        if (out.size() + depth > count) return false;  // more pixels than the image holds
        while (depth > 0) {
            const std::uint8_t index = stack[--depth];
            if (index >= colours) return false;
            out.push_back(index);
        }

        if (previous >= 0 && next < kMaxCodes) {
            prefix[static_cast<std::size_t>(next)] = static_cast<std::uint16_t>(previous);
            suffix[static_cast<std::size_t>(next)] = static_cast<std::uint8_t>(c);
            first[static_cast<std::size_t>(next)] = first[static_cast<std::size_t>(previous)];
            ++next;
            if (next == 1 << codeSize && codeSize < 12) ++codeSize;
        }
        previous = code;
    }
}
}  // namespace

QImage ReadPlainGif(const QByteArray& bytes) {
    Reader in(bytes);
    if (!in.Has(13)) return {};
    const std::uint8_t* signature = in.Take(6);
    if (std::memcmp(signature, "GIF87a", 6) != 0 && std::memcmp(signature, "GIF89a", 6) != 0) return {};
    const int width = in.Word();
    const int height = in.Word();
    const std::uint8_t flags = in.Byte();
    in.Byte();  // background colour: the image covers it all
    in.Byte();  // aspect ratio
    if (!(flags & 0x80) || width == 0 || height == 0) return {};
    const int colours = 2 << (flags & 7);
    if (!in.Has(static_cast<std::size_t>(3 * colours))) return {};
    const std::uint8_t* table = in.Take(static_cast<std::size_t>(3 * colours));

    // The one image, straight after the colour table.
    if (!in.Has(10) || in.Byte() != 0x2C) return {};
    const int left = in.Word(), top = in.Word(), frameWidth = in.Word(), frameHeight = in.Word();
    const std::uint8_t imageFlags = in.Byte();
    if (left != 0 || top != 0 || frameWidth != width || frameHeight != height || (imageFlags & 0x80)) return {};
    const bool interlaced = imageFlags & 0x40;
    if (!in.Has(1)) return {};
    const int minimumCodeSize = in.Byte();
    if (minimumCodeSize < 2 || minimumCodeSize > 8) return {};
    std::vector<std::uint8_t> data;
    if (!GatherData(in, data)) return {};
    if (!in.Has(1) || in.Byte() != 0x3B) return {};  // the trailer: nothing more in the file

    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    std::vector<std::uint8_t> indices;
    if (!Decompress(data, minimumCodeSize, colours, indices, count)) return {};

    QImage image(width, height, QImage::Format_RGB32);
    if (image.isNull()) return {};
    std::array<QRgb, 256> rgb{};
    for (int i = 0; i < colours; ++i)
        rgb[static_cast<std::size_t>(i)] = qRgb(table[3 * i], table[3 * i + 1], table[3 * i + 2]);
    // Interlaced rows come in four passes: every 8th from 0, every 8th from 4,
    // every 4th from 2, every 2nd from 1.
    static constexpr int kStart[] = {0, 4, 2, 1};
    static constexpr int kStep[] = {8, 8, 4, 2};
    const std::uint8_t* source = indices.data();
    auto putRow = [&](int y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) row[x] = rgb[*source++];
    };
    if (interlaced) {
        for (int pass = 0; pass < 4; ++pass)
            for (int y = kStart[pass]; y < height; y += kStep[pass]) putRow(y);
    } else {
        for (int y = 0; y < height; ++y) putRow(y);
    }
    return image;
}

}  // namespace shd::gui
