#include "tests/faults/SystemCalls.h"

#include <cstring>
#include <fcntl.h>
#include <linux/futex.h>
#include <map>
#include <sys/syscall.h>

namespace faults {

namespace {

std::string fcntlName(int command) {
    static std::map<int, char const *> const names{
        {F_ADD_SEALS, "fcntl-add_seals"}, {F_DUPFD_CLOEXEC, "fcntl-dupfd"},
        {F_DUPFD, "fcntl-dupfd"},         {F_GETFD, "fcntl-getfd"},
        {F_GETFL, "fcntl-getfl"},         {F_GETPIPE_SZ, "fcntl-getpipe_size"},
        {F_GET_SEALS, "fcntl-get_seals"}, {F_SETFD, "fcntl-setfd"},
        {F_SETFL, "fcntl-setfl"},         {F_SETPIPE_SZ, "fcntl-setpipe_size"}};
    auto const found = names.find(command);
    return found == names.end() ? "fcntl-" + std::to_string(command) : found->second;
}

std::string futexName(int operation) {
    int const kind = operation & FUTEX_CMD_MASK;
    return kind == FUTEX_WAIT || kind == FUTEX_WAIT_BITSET ? "futex-wait" : "futex-wake";
}

} // namespace

std::string systemCallName(long number, int second) {
    if (number == SYS_fcntl) {
        return fcntlName(second);
    }
    if (number == SYS_futex) {
        return futexName(second);
    }
    static std::map<long, char const *> const names{
        {SYS_access, "access"},
        {SYS_brk, "brk"},
        {SYS_chdir, "chdir"},
        {SYS_chmod, "chmod"},
        {SYS_clock_getres, "clock_getres"},
        {SYS_clock_gettime, "clock_gettime"},
        {SYS_clock_nanosleep, "clock_nanosleep"},
        {SYS_clone, "clone"},
        {SYS_clone3, "clone3"},
        {SYS_close, "close"},
        {SYS_close_range, "close_range"},
        {SYS_dup2, "dup2"},
        {SYS_dup3, "dup3"},
        {SYS_execve, "execve"},
        {SYS_exit, "exit"},
        {SYS_exit_group, "exit_group"},
        {SYS_faccessat, "faccessat"},
        {SYS_faccessat2, "faccessat2"},
        {SYS_fadvise64, "fadvise64"},
        {SYS_fallocate, "fallocate"},
        {SYS_fchmod, "fchmod"},
        {SYS_fchmodat, "fchmodat"},
        {SYS_fchown, "fchown"},
        {SYS_fdatasync, "fdatasync"},
        {SYS_fstat, "fstat"},
        {SYS_fsync, "fsync"},
        {SYS_ftruncate, "ftruncate"},
        {SYS_getcwd, "getcwd"},
        {SYS_getdents64, "getdents64"},
        {SYS_getegid, "getegid"},
        {SYS_geteuid, "geteuid"},
        {SYS_getgid, "getgid"},
        {SYS_getpgrp, "getpgrp"},
        {SYS_getpid, "getpid"},
        {SYS_getppid, "getppid"},
        {SYS_getrandom, "getrandom"},
        {SYS_gettid, "gettid"},
        {SYS_getuid, "getuid"},
        {SYS_ioctl, "ioctl"},
        {SYS_kill, "kill"},
        {SYS_linkat, "linkat"},
        {SYS_lseek, "lseek"},
        {SYS_lstat, "lstat"},
        {SYS_madvise, "madvise"},
        {SYS_memfd_create, "memfd_create"},
        {SYS_mkdir, "mkdir"},
        {SYS_mkdirat, "mkdirat"},
        {SYS_mmap, "mmap"},
        {SYS_mprotect, "mprotect"},
        {SYS_mremap, "mremap"},
        {SYS_munmap, "munmap"},
        {SYS_newfstatat, "newfstatat"},
        {SYS_open, "open"},
        {SYS_openat, "openat"},
        {SYS_pipe2, "pipe2"},
        {SYS_poll, "poll"},
        {SYS_ppoll, "ppoll"},
        {SYS_prctl, "prctl"},
        {SYS_pread64, "pread64"},
        {SYS_prlimit64, "prlimit64"},
        {SYS_pwrite64, "pwrite64"},
        {SYS_pwritev2, "pwritev2"},
        {SYS_read, "read"},
        {SYS_readlink, "readlink"},
        {SYS_readlinkat, "readlinkat"},
        {SYS_readv, "readv"},
        {SYS_rename, "rename"},
        {SYS_renameat, "renameat"},
        {SYS_renameat2, "renameat2"},
        {SYS_restart_syscall, "restart_syscall"},
        {SYS_rmdir, "rmdir"},
        {SYS_rseq, "rseq"},
        {SYS_rt_sigaction, "rt_sigaction"},
        {SYS_rt_sigprocmask, "rt_sigprocmask"},
        {SYS_rt_sigreturn, "rt_sigreturn"},
        {SYS_sched_getaffinity, "sched_getaffinity"},
        {SYS_sched_yield, "sched_yield"},
        {SYS_set_robust_list, "set_robust_list"},
        {SYS_setitimer, "setitimer"},
        {SYS_setsid, "setsid"},
        {SYS_stat, "stat"},
        {SYS_statx, "statx"},
        {SYS_sysinfo, "sysinfo"},
        {SYS_tgkill, "tgkill"},
        {SYS_umask, "umask"},
        {SYS_uname, "uname"},
        {SYS_unlink, "unlink"},
        {SYS_unlinkat, "unlinkat"},
        {SYS_wait4, "wait4"},
        {SYS_waitid, "waitid"},
        {SYS_write, "write"},
        {SYS_writev, "writev"},
    };
    auto const found = names.find(number);
    return found == names.end() ? "call-" + std::to_string(number) : found->second;
}

int errorNumber(std::string const & name) {
    constexpr int greatest = 4095;
    for (int number = 1; number <= greatest; ++number) {
        char const * const known = ::strerrorname_np(number);
        if (known && name == known) {
            return number;
        }
    }
    return 0;
}

} // namespace faults
