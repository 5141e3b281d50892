#!/bin/sh
# For the packages that scripts/setup installs: the links of a new init script are those of a
# service that does not start. Links that are there already are left alone.
case ${2:-} in
    defaults) exec /usr/sbin/update-rc.d "$1" defaults-disabled ;;
esac
exec /usr/sbin/update-rc.d "$@"
