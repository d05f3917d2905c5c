// The room made on the heap for the window: large blocks made after it lie
// on the heap, in room marked for huge pages.
#include <gtest/gtest.h>

#include <QFile>
#include <QList>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "gui/Heap.h"

#if defined(__SANITIZE_ADDRESS__)
#define SHD_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SHD_SANITIZED 1
#endif
#endif

namespace shd::gui::test {
namespace {

// The mapping of /proc/self/smaps that holds `address`: its name and whether
// it may take huge pages.
struct Mapping {
    bool found = false;
    QByteArray name;
    bool hugePages = false;
};

Mapping MappingOf(std::uintptr_t address) {
    QFile smaps(QStringLiteral("/proc/self/smaps"));
    Mapping mapping;
    if (!smaps.open(QIODevice::ReadOnly)) return mapping;
    bool inside = false;
    for (const QByteArray& line : smaps.readAll().split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() >= 5 && fields[0].contains('-') && !fields[0].endsWith(':')) {
            const QList<QByteArray> range = fields[0].split('-');
            bool okLow = false, okHigh = false;
            const auto low = range[0].toULongLong(&okLow, 16), high = range[1].toULongLong(&okHigh, 16);
            inside = okLow && okHigh && low <= address && address < high;
            if (inside) {
                mapping.found = true;
                mapping.name = fields.size() >= 6 ? fields[5] : QByteArray();
            }
        } else if (inside && fields.size() == 2 && fields[0] == "THPeligible:") {
            mapping.hugePages = fields[1] == "1";
        }
    }
    return mapping;
}

bool HugePagesOnRequest() {
    QFile setting(QStringLiteral("/sys/kernel/mm/transparent_hugepage/enabled"));
    if (!setting.open(QIODevice::ReadOnly)) return false;
    const QByteArray text = setting.readAll();
    return text.contains("[always]") || text.contains("[madvise]");
}

TEST(HeapTest, ABackingStoreMadeAfterTheRoomLiesOnTheHeapInHugePages) {
#if !defined(__linux__) || !defined(__GLIBC__) || defined(SHD_SANITIZED)
    GTEST_SKIP() << "only glibc's own heap on Linux is prepared";
#else
    if (!HugePagesOnRequest()) GTEST_SKIP() << "this kernel gives no huge pages";
    constexpr std::size_t kStore = 1280 * 1024 * 4;
    ReserveHeap(kStore + kHeapForControls);
    auto* controls = static_cast<char*>(std::malloc(std::size_t{1} << 20));
    auto* store = static_cast<char*>(std::malloc(kStore));
    ASSERT_NE(controls, nullptr);
    ASSERT_NE(store, nullptr);
    std::memset(store, 1, kStore);
    for (const std::uintptr_t address : {reinterpret_cast<std::uintptr_t>(store),
                                         reinterpret_cast<std::uintptr_t>(store) + kStore - 1}) {
        const Mapping mapping = MappingOf(address);
        ASSERT_TRUE(mapping.found);
        EXPECT_EQ(mapping.name, QByteArray("[heap]"));  // not a mapping of its own
        EXPECT_TRUE(mapping.hugePages);
    }
    std::free(store);
    std::free(controls);
#endif
}

}  // namespace
}  // namespace shd::gui::test
