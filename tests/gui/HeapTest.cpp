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

// What the room does depends on the heap being as a new process has it, so
// the check runs in a process of its own: a death test in the "threadsafe"
// style runs this test again in a fresh copy of the binary.
void CheckTheRoom() {
    constexpr std::size_t kStore = 1280 * 1024 * 4;
    ReserveHeap(kStore + kHeapForControls);
    auto* controls = static_cast<char*>(std::malloc(std::size_t{1} << 20));
    auto* store = static_cast<char*>(std::malloc(kStore));
    if (!controls || !store) std::_Exit(2);
    std::memset(store, 1, kStore);
    for (const std::uintptr_t address : {reinterpret_cast<std::uintptr_t>(store),
                                         reinterpret_cast<std::uintptr_t>(store) + kStore - 1}) {
        const Mapping mapping = MappingOf(address);
        if (!mapping.found) std::_Exit(3);
        if (mapping.name != QByteArray("[heap]")) std::_Exit(4);  // not a mapping of its own
        if (!mapping.hugePages) std::_Exit(5);
    }
    std::_Exit(0);
}

TEST(HeapTest, ABackingStoreMadeAfterTheRoomLiesOnTheHeapInHugePages) {
#if !defined(__linux__) || !defined(__GLIBC__) || defined(SHD_SANITIZED)
    GTEST_SKIP() << "only glibc's own heap on Linux is prepared";
#else
    if (!HugePagesOnRequest()) GTEST_SKIP() << "this kernel gives no huge pages";
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // Exit 3: no mapping holds the block; 4: it is not on the heap; 5: no huge pages there.
    EXPECT_EXIT(CheckTheRoom(), testing::ExitedWithCode(0), "");
#endif
}

}  // namespace
}  // namespace shd::gui::test
