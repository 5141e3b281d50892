# The lab comes up and goes down. Sourced by evpn-lab.
# shellcheck shell=bash

# What each VTEP counts; fails when one of its daemons does not answer.
counts() {
    local n
    for n in "${vteps[@]}"; do
        show "$n" 'show evpn vni json' | jq -ces '.[0]' || return
        show "$n" 'show bgp l2vpn evpn summary json' | jq -ces '[.[0].peers[].pfxRcd]' || return
    done
}

# Every VTEP has heard of everything: its counts stay the same for a second.
settled() {
    local before after
    before=$(counts) || return
    sleep 1
    after=$(counts) || return
    [[ $before == "$after" ]]
}

# $lab/made tells that a directory is a lab's, and what that lab has made outside
# of it: a line "up PID" while it is being set up, "prefix PREFIX", then one "namespace NAME" each,
# written before the namespace is made. What it does not name is somebody else's.

made() { # WORD: what the marker names of a kind
    sed -n "s/^$1 //p" "$lab/made"
}

stands() { [[ -f $lab/made ]]; }

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

# Nothing of somebody else's stands where the lab is to be.
unoccupied() {
    local ns n space
    if [[ -e $lab || -L $lab ]]; then
        [[ -d $lab ]] || die "$lab is no directory"
        stands || [[ -z $(ls -A "$lab") ]] || die "$lab is not empty and holds no lab: choose another EVPN_LAB_DIR"
    fi
    for ns in $(namespaces); do
        [[ ! -e /run/netns/$ns ]] || { stands && made namespace | grep -qxF -e "$ns"; } ||
            die "a namespace $ns is there, and no lab in $lab has made it: choose another EVPN_LAB_PREFIX"
    done
    for n in "${vteps[@]}"; do
        space=$frr_run/$(name "$n")
        [[ ! -e $space && ! -L $space ]] || leads_here "$n" ||
            die "$space is there, and no lab in $lab has made it: choose another EVPN_LAB_PREFIX"
    done
}

# The path space of a VTEP leads to this lab.
leads_here() { # N
    [[ -L $frr_run/$(name "$1") && $(readlink "$frr_run/$(name "$1")") == "$lab"/* ]]
}

# The sockets of the daemons have paths that the kernel takes, also by way of the path space.
short_enough() {
    local LC_ALL=C path
    for path in "$(sockets 1)/zserv.api" "$frr_run/$(name 1)/zebra.vty"; do
        ((${#path} <= 107)) || die "the path of a socket would have ${#path} bytes, and 107 are allowed:" \
            "choose a shorter EVPN_LAB_DIR or EVPN_LAB_PREFIX ($path)"
    done
}

# The user that the daemons run as gets to their folders.
open_to_daemons() {
    local folder='' part parts
    IFS=/ read -ra parts <<<"$(realpath "$lab")"
    for part in "${parts[@]:1}"; do
        folder+=/$part
        setpriv --reuid=frr --regid=frr --init-groups test -x "$folder" ||
            die "the daemons run as the user frr, who may not enter $folder: choose another EVPN_LAB_DIR"
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
    trap 'trap - EXIT; ! stands || [[ $(made up) != "$$" ]] || down' EXIT
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

# Ends the process whose id is in a file, if its command line still names this
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

# Ends an `up` that is under way, which takes down what it has made so far.
end_up() {
    local pid end=$((SECONDS + patience))
    pid=$(made up)
    under_way() { [[ -n $pid && $pid != "$$" ]] && { tr '\0' ' ' <"/proc/$pid/cmdline"; } 2>/dev/null | grep -qE '/evpn-lab up '; }
    under_way || return 0
    kill "$pid" || true # it may just have ended
    while under_way; do
        ((SECONDS < end)) || die "cannot end the one who sets up $lab (process $pid)"
        sleep 0.05
    done
}

# Without a marker there is nothing to take down.
down() {
    local n ns prefix
    ! stands || end_up
    stands || return 0
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
