// The real files of a POSIX system.
