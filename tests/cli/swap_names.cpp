// The attacker of the save race test: swaps two names in a folder of their
// own, atomically and over and over until killed, so that one is a file of
// theirs (mode 0666) and the other a link to someone else's file, and each
// in turn is the name that someone saves to. Whatever a save puts there is
// made one of the two again.
//   swap_names LINK_TARGET FIRST SECOND
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>

#ifndef RENAME_EXCHANGE
#define RENAME_EXCHANGE (1 << 1)
#endif

namespace {
bool IsLink(const char* name) {
    struct stat info {};
    return ::lstat(name, &info) == 0 && S_ISLNK(info.st_mode);
}

bool IsMine(const char* name) {
    struct stat info {};
    return ::lstat(name, &info) == 0 && S_ISREG(info.st_mode) && info.st_uid == ::getuid() &&
           (info.st_mode & 07777) == 0666;
}

void MakeMine(const char* name) {
    ::unlink(name);
    const int fd = ::open(name, O_WRONLY | O_CREAT | O_EXCL, 0666);
    if (fd >= 0) ::fchmod(fd, 0666), ::close(fd);
}
}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: swap_names LINK_TARGET FIRST SECOND\n");
        return 2;
    }
    const char* target = argv[1];
    for (;;) {
        ::syscall(SYS_renameat2, AT_FDCWD, argv[2], AT_FDCWD, argv[3], RENAME_EXCHANGE);
        const bool firstIsLink = IsLink(argv[2]);
        const char* link = firstIsLink ? argv[2] : argv[3];
        const char* file = firstIsLink ? argv[3] : argv[2];
        if (!IsLink(link)) ::unlink(link), ::symlink(target, link);
        if (!IsMine(file)) MakeMine(file);
    }
}
