# Shared by the parts of the lab: names, and commands in a VTEP. Sourced by evpn-lab.
# shellcheck shell=bash
# shellcheck disable=SC2034 # used by the other parts

prefix=${EVPN_LAB_PREFIX:-}
lab=${EVPN_LAB_DIR:-/run/${prefix}evpn-lab}
frr_lib=${FRR_LIB:-/usr/lib/frr}
frr_run=/var/run/frr
fabric=${prefix}vtep-fabric
vteps=(1 2 3)
tenants=(tenant1 tenant2)
patience=30 # limit of one wait in seconds

die() {
    echo "evpn-lab: $*" >&2
    exit 1
}

name() { echo "${prefix}vtep$1"; }
sockets() { echo "$lab/run/$(name "$1")"; }

vty() { # N ARGUMENT...
    local n=$1
    shift
    vtysh --vty_socket "$(sockets "$n")" "$@"
}

show() { vty "$1" -c "$2"; } # N COMMAND

in_vrf() { # N VRF COMMAND...
    local n=$1 vrf=$2
    shift 2
    if [[ $vrf == default ]]; then
        ip netns exec "$(name "$n")" "$@"
    else
        # The tenants' namespaces have names only in the daemons' mount namespace.
        nsenter -t "$(<"$(sockets "$n")/zebra.pid")" -m -n ip netns exec "$vrf" "$@"
    fi
}

# Resets what a new namespace may have inherited from the first one: with it, a host
# that has only its own address would drop what its gateway sends, or not answer ARP.
plain_arp() { # NAMESPACE
    ip netns exec "$1" sysctl -qw net.ipv4.conf.{all,default,lo}.{rp_filter,arp_filter,arp_announce,arp_ignore}=0
}

wait_for() { # WHAT COMMAND...
    local what=$1 end=$((SECONDS + patience))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < end)) || die "gave up waiting for $what"
        sleep 0.1
    done
}
