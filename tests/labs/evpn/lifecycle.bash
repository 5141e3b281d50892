# Sets the lab up and takes it down. Sourced by evpn-lab.
# shellcheck shell=bash

# The counters of each VTEP; fails if one of its daemons does not answer.
counts() {
    local n
    for n in "${vteps[@]}"; do
        show "$n" 'show evpn vni json' | jq -ces '.[0]' || return
        show "$n" 'show bgp l2vpn evpn summary json' | jq -ces '[.[0].peers[].pfxRcd]' || return
    done
}

# Every VTEP has learned everything: its counters stay the same for a second.
settled() {
    local before after
    before=$(counts) || return
    sleep 1
    after=$(counts) || return
    [[ $before == "$after" ]]
}

# The file $lab/made marks the directory of a lab, and lists what that lab has made outside of
# it: a line "up PID" while it is being set up, "prefix PREFIX", then a "namespace NAME" for each
# namespace, written before the namespace is made. Nothing else belongs to the lab.

made() { # WORD: the marker's entries of that kind
    sed -n "s/^$1 //p" "$lab/made"
}

lab_exists() { [[ -f $lab/made ]]; }

make_namespace() { # NAME
    echo "namespace $1" >>"$lab/made"
    ip netns add "$1" || {
        sed -i '$d' "$lab/made"
        die "cannot make the namespace $1"
    }
    plain_arp "$1"
}

namespaces() {
    local n
    echo "$fabric"
    for n in "${vteps[@]}"; do printf '%s\n' "$(name "$n")" "$(name "$n")-hosts"; done
}

# Nothing that this lab did not make is where the lab will be.
unoccupied() {
    local ns n space
    if [[ -e $lab || -L $lab ]]; then
        [[ -d $lab ]] || die "$lab is not a directory"
        lab_exists || [[ -z $(ls -A "$lab") ]] || die "$lab is not empty and has no lab in it: choose another EVPN_LAB_DIR"
    fi
    for ns in $(namespaces); do
        [[ ! -e /run/netns/$ns ]] || { lab_exists && made namespace | grep -qxF -e "$ns"; } ||
            die "the namespace $ns exists and was not made by a lab in $lab: choose another EVPN_LAB_PREFIX"
    done
    for n in "${vteps[@]}"; do
        space=$frr_run/$(name "$n")
        [[ ! -e $space && ! -L $space ]] || leads_here "$n" ||
            die "$space exists and was not made by a lab in $lab: choose another EVPN_LAB_PREFIX"
    done
}

# The path space of a VTEP leads to this lab.
leads_here() { # N
    [[ -L $frr_run/$(name "$1") && $(readlink "$frr_run/$(name "$1")") == "$lab"/* ]]
}

# The paths of the daemons' sockets are short enough for the kernel, through the path space, too.
short_enough() {
    local LC_ALL=C path
    for path in "$(sockets 1)/zserv.api" "$frr_run/$(name 1)/zebra.vty"; do
        ((${#path} <= 107)) || die "the path of a socket would have ${#path} bytes, but only 107 are allowed:" \
            "choose a shorter EVPN_LAB_DIR or EVPN_LAB_PREFIX ($path)"
    done
}

# The user that the daemons run as can enter their folders.
open_to_daemons() {
    local folder='' part parts
    IFS=/ read -ra parts <<<"$(realpath "$lab")"
    for part in "${parts[@]:1}"; do
        folder+=/$part
        setpriv --reuid=frr --regid=frr --init-groups test -x "$folder" ||
            die "the daemons run as the user frr, who cannot enter $folder: choose another EVPN_LAB_DIR"
    done
}

up() { # [PARENT]
    local n tool
    [[ $EUID == 0 ]] || die "needs root"
    for tool in ip bridge jq nsenter setpriv sysctl vtysh "$frr_lib/zebra" "$frr_lib/bgpd"; do
        command -v "$tool" >/dev/null || die "$tool is missing"
    done
    short_enough
    unoccupied
    down
    install -d -m 755 "$lab"
    printf '%s\n' "up $$" "prefix $prefix" >"$lab/made"
    trap 'exit 143' TERM
    trap 'trap - EXIT; ! lab_exists || [[ $(made up) != "$$" ]] || down' EXIT
    [[ -z ${1:-} ]] || "$here/when-gone" "$1,$$" env "EVPN_LAB_DIR=$lab" "EVPN_LAB_PREFIX=$prefix" "$here/evpn-lab" down
    open_to_daemons
    install -d -m 755 "$lab/run" "$lab/etc"
    install -d -m 755 -o frr -g frr "$frr_run" "$lab/log"
    make_namespace "$fabric"
    ip -n "$fabric" link add name fabric address 02:00:00:00:00:09 type bridge stp_state 0
    ip -n "$fabric" link set fabric up
    for n in "${vteps[@]}"; do make_vtep "$n"; done
    for n in "${vteps[@]}"; do wait_for "the BGP sessions of vtep$n" established "$n" 2; done
    populate
    wait_for "the fabric to settle" settled
    sed -i '/^up /d' "$lab/made"
    trap - EXIT
}

# Ends the process whose id is in the file if its command line still names this
# lab, and waits until it is gone.
end_process() { # PID-FILE
    local pid tries
    [[ -s $1 ]] || return 0
    pid=$(<"$1")
    ours() { grep -qsaF "$lab/" "/proc/$pid/cmdline"; }
    ours || return 0
    kill "$pid"
    for ((tries = 0; tries < 100; tries++)); do
        ours || return 0
        sleep 0.05
    done
    kill -KILL "$pid"
}

# Ends an `up` that is in progress, which takes down what it has made so far.
end_up() {
    local pid end=$((SECONDS + patience))
    pid=$(made up)
    under_way() { [[ -n $pid && $pid != "$$" ]] && { tr '\0' ' ' <"/proc/$pid/cmdline"; } 2>/dev/null | grep -qE '/evpn-lab up '; }
    under_way || return 0
    kill "$pid" || true # it may have ended just now
    while under_way; do
        ((SECONDS < end)) || die "cannot end the process that is setting up $lab (process $pid)"
        sleep 0.05
    done
}

# Does nothing without a marker.
down() {
    local n ns prefix
    ! lab_exists || end_up
    lab_exists || return 0
    prefix=$(made prefix)
    end_process "$lab/run/speaker.pid"
    for n in "${vteps[@]}"; do
        end_process "$(sockets "$n")/bgpd.pid"
        end_process "$(sockets "$n")/zebra.pid"
    done
    for n in "${vteps[@]}"; do
        ! leads_here "$n" || rm -f "$frr_run/$(name "$n")"
    done
    for ns in $(made namespace); do
        [[ ! -e /run/netns/$ns ]] || ip netns delete "$ns"
    done
    rm -rf "${lab:?}/run" "${lab:?}/etc" "${lab:?}/log"
    # The marker goes last: what fails above can be tried again.
    rm -f "$lab/made"
    rmdir --ignore-fail-on-non-empty "$lab"
}
