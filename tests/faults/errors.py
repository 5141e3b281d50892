"""Which errors each system call can have, as far as they do not come from its arguments alone."""

_OPENING = ["EACCES", "EINTR", "EIO", "ELOOP", "EMFILE", "ENFILE", "ENOENT", "ENOMEM", "ENOSPC",
            "ENOTDIR", "ENXIO", "EOVERFLOW", "EPERM", "EROFS", "ETXTBSY", "EDQUOT"]
_LOOKING = ["EACCES", "EIO", "ELOOP", "ENAMETOOLONG", "ENOENT", "ENOMEM", "ENOTDIR", "EOVERFLOW"]
_NAMING = ["EACCES", "EBUSY", "EDQUOT", "EEXIST", "EIO", "ELOOP", "EMLINK", "ENOENT", "ENOMEM",
           "ENOSPC", "ENOTDIR", "EPERM", "EROFS", "EXDEV"]
_REMOVING = ["EACCES", "EBUSY", "EIO", "EISDIR", "ENOENT", "ENOMEM", "ENOTDIR", "EPERM", "EROFS"]
_GROWING = ["EFBIG", "EINTR", "EIO", "ENODEV", "ENOSPC", "EOPNOTSUPP", "EPERM", "EDQUOT"]
_WRITING = ["EAGAIN", "EDQUOT", "EFBIG", "EINTR", "EIO", "ENOSPC", "EPERM", "EPIPE"]
_CHANGING = ["EACCES", "EIO", "ENOMEM", "EPERM", "EROFS"]
_STARTING = ["EAGAIN", "ENOMEM", "ENOSYS", "EPERM"]

# Those without an error cannot fail, or only because of what they are given.
ERRORS = {
    "access": _LOOKING + ["EROFS"],
    "brk": ["ENOMEM"],
    "clock_getres": [],
    "clock_gettime": [],
    "clock_nanosleep": ["EINTR"],
    "clone": _STARTING,
    "clone3": _STARTING,
    "close": ["EDQUOT", "EINTR", "EIO", "ENOSPC"],
    "close_range": ["EMFILE", "ENOMEM", "ENOSYS"],
    "dup3": ["EBUSY", "EINTR", "EMFILE"],
    "execve": ["E2BIG", "EACCES", "EAGAIN", "EIO", "ELOOP", "EMFILE", "ENFILE", "ENOENT",
               "ENOEXEC", "ENOMEM", "EPERM", "ETXTBSY"],
    "exit": [],
    "exit_group": [],
    "faccessat": _LOOKING + ["EROFS", "ETXTBSY"],
    "faccessat2": _LOOKING + ["ENOSYS", "EROFS", "ETXTBSY"],
    "fadvise64": [],
    "fallocate": _GROWING,
    "fchmod": _CHANGING,
    "fchown": _CHANGING,
    "fcntl-add_seals": ["EBUSY", "EPERM"],
    "fcntl-dupfd": ["EMFILE"],
    "fcntl-getfd": [],
    "fcntl-getfl": [],
    "fcntl-getpipe_size": [],
    "fcntl-setfd": [],
    "fcntl-setfl": ["EPERM"],
    "fcntl-setpipe_size": ["EBUSY", "ENOMEM", "EPERM"],
    "fstat": ["EIO", "ENOMEM", "EOVERFLOW"],
    "fsync": ["EDQUOT", "EINTR", "EIO", "ENOSPC", "EROFS"],
    "ftruncate": _GROWING,
    "futex-wait": ["EAGAIN", "EINTR"],
    "futex-wake": [],
    "getcwd": ["EACCES", "ENOENT", "ENOMEM"],
    "getdents64": ["EIO", "ENOENT"],
    "getegid": [],
    "geteuid": [],
    "getgid": [],
    "getpid": [],
    "getppid": [],
    "getrandom": ["EAGAIN", "EINTR", "ENOSYS"],
    "gettid": [],
    "getuid": [],
    "ioctl": ["EIO", "ENOTTY"],
    "kill": ["EPERM", "ESRCH"],
    "linkat": _NAMING,
    "lseek": ["ESPIPE"],
    "madvise": ["EAGAIN", "ENOMEM"],
    "memfd_create": ["EMFILE", "ENFILE", "ENOMEM", "ENOSYS", "EPERM"],
    "mkdir": _NAMING,
    "mmap": ["EACCES", "EAGAIN", "ENFILE", "ENODEV", "ENOMEM", "EPERM"],
    "mprotect": ["EACCES", "ENOMEM"],
    "mremap": ["EAGAIN", "ENOMEM"],
    "munmap": ["ENOMEM"],
    "newfstatat": _LOOKING,
    "openat": _OPENING,
    "pipe2": ["EMFILE", "ENFILE"],
    "poll": ["EINTR", "ENOMEM"],
    "prctl": [],
    "pread64": ["EINTR", "EIO"],
    "prlimit64": ["EPERM"],
    "pwritev2": _WRITING + ["EOPNOTSUPP", "ENOSYS"],
    "read": ["EAGAIN", "EINTR", "EIO", "EISDIR"],
    "readlink": _LOOKING,
    "readlinkat": _LOOKING,
    "rename": _NAMING,
    "restart_syscall": [],
    "rmdir": _REMOVING + ["ENOTEMPTY"],
    "rseq": [],
    "rt_sigaction": [],
    "rt_sigprocmask": [],
    "rt_sigreturn": [],
    "sched_getaffinity": [],
    "sched_yield": [],
    "set_robust_list": [],
    "setitimer": [],
    "setsid": [],  # a new process leads no group
    "unlink": _REMOVING,
    "unlinkat": _REMOVING + ["ENOTEMPTY"],
    "wait4": ["ECHILD", "EINTR"],
    "write": _WRITING,
}

# A signal can interrupt these for a while; each must then be made again.
INTERRUPTED = ["clock_nanosleep", "fallocate", "fsync", "ftruncate", "futex-wait", "openat", "poll",
               "pread64", "pwritev2", "read", "wait4", "write"]

# These can transfer fewer bytes than asked for.
TRANSFERS = ["pread64", "pwritev2", "read", "write"]


class UnknownCall(Exception):
    """A program made a system call that this table lacks."""


def errors_of(call):
    """The errors that a call of this name can have."""
    if call not in ERRORS:
        raise UnknownCall(
            f"vxshow makes the system call {call}, which tests/faults/errors.py lacks"
        )
    return ERRORS[call]
