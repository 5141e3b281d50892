#!/bin/sh
# For the packages that scripts/setup installs: starts a service only where it was enabled
# before, as one that was stopped for its upgrade. Under systemd the program itself sees to that.
name=
action=
for word in "$@"; do
    case $word in
        -*) ;;
        *) if [ -z "$name" ]; then name=$word; elif [ -z "$action" ]; then action=$word; fi ;;
    esac
done
if [ "$action" = start ] && [ ! -d /run/systemd/system ]; then
    enabled=
    for link in /etc/rc[2-5S].d/S[0-9][0-9]"$name"; do
        [ ! -e "$link" ] || enabled=1
    done
    [ -n "$enabled" ] || exit 0
fi
exec /usr/sbin/invoke-rc.d "$@"
