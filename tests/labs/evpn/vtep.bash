# A VTEP: namespaces, devices, daemons. Sourced by evpn-lab.
# shellcheck shell=bash

# The functions below run in the VTEP's namespaces; "there" is the command that enters the VRF.

in_there() { # VRF: sets there
    there=()
    [[ $1 == default ]] || there=(ip netns exec "$1")
}

# The bridge (which is also the gateway) and the VXLAN device of one VNI. The
# VXLAN device is created in the underlay's namespace, then moved: its packets
# still leave through the underlay.
make_vni() { # N VNI VRF BRIDGE-MAC VXLAN-MAC
    local n=$1 vni=$2 vrf=$3 bridge_mac=$4 vxlan_mac=$5 there family
    in_there "$vrf"
    "${there[@]}" ip link add name "br$vni" address "$bridge_mac" type bridge stp_state 0 ageing_time 100000000
    ip link add name "vx$vni" address "$vxlan_mac" type vxlan id "$vni" local "10.0.0.$n" dstport 4789 nolearning
    [[ $vrf == default ]] || ip link set "vx$vni" netns "$vrf"
    "${there[@]}" ip link set "vx$vni" addrgenmode none
    "${there[@]}" ip link set "vx$vni" master "br$vni"
    "${there[@]}" ip link set "vx$vni" type bridge_slave neigh_suppress on learning off
    # Learned ARP and ND entries neither expire nor become stale: a VTEP with an
    # Ethernet segment announces only reachable ones.
    for family in ipv4 ipv6; do
        "${there[@]}" sysctl -qw "net.$family.neigh.br$vni.gc_stale_time=1000000" \
            "net.$family.neigh.br$vni.base_reachable_time_ms=1000000000"
    done
    "${there[@]}" ip link set "br$vni" up
    "${there[@]}" ip link set "vx$vni" up
}

# The VTEP's end of a veth whose other end is in the hosts' namespace.
attach_port() { # PORT VNI VRF
    local port=$1 vni=$2 vrf=$3 there
    in_there "$vrf"
    [[ $vrf == default ]] || ip link set "$port" netns "$vrf"
    "${there[@]}" ip link set "$port" addrgenmode none
    "${there[@]}" ip link set "$port" master "br$vni"
    "${there[@]}" ip link set "$port" up
}

vtep_inside() { # N
    local n=$1 vrf etc run vni
    etc=$lab/etc/$(name "$n")
    run=$(sockets "$n")
    mount --make-rprivate /
    mount -t tmpfs -o mode=755 tmpfs /run/netns
    mount -t tmpfs -o mode=1777 tmpfs /var/tmp
    for vrf in "${tenants[@]}"; do
        ip netns add "$vrf"
        plain_arp "$vrf"
        ip -n "$vrf" link set lo up
        ip netns exec "$vrf" sysctl -qw net.ipv4.ip_forward=1 net.ipv6.conf.all.forwarding=1
    done
    make_vni "$n" 10 tenant1 "02:00:10:00:0$n:fe" "02:00:10:00:0$n:fd"
    make_vni "$n" 20 tenant1 "02:00:20:00:0$n:fe" "02:00:20:00:0$n:fd"
    make_vni "$n" 4098 default "02:40:98:00:0$n:fe" "02:40:98:00:0$n:fd"
    make_vni "$n" 5001 tenant1 "02:50:01:00:0$n:fe" "02:50:01:00:0$n:fd"
    make_vni "$n" 5002 tenant2 "02:50:02:00:0$n:fe" "02:50:02:00:0$n:fd"
    attach_port host10 10 tenant1
    attach_port host20 20 tenant1
    attach_port host4098 4098 default
    for vni in 10 20; do
        ip -n tenant1 address add "192.168.$vni.25$n/24" dev "br$vni"
        ip -n tenant1 address add "2001:db8:$vni::25$n/64" dev "br$vni" nodad
    done

    # What the tenants announce: prefixes of one VTEP only, prefixes that VTEPs 2
    # and 3 share, and one behind a host.
    ip -n tenant1 route add blackhole "198.51.100.$((n * 32))/27"
    ip -n tenant1 -6 route add blackhole "2001:db8:$n::/48"
    ip -n tenant1 route add "172.16.$n.0/24" via "192.168.10.${n}1"
    if [[ $n != 1 ]]; then
        ip -n tenant1 route add blackhole 203.0.113.0/24
        ip -n tenant1 -6 route add blackhole 2001:db8:ffff::/48
    fi
    ip -n tenant2 address add "10.2.$n.1/32" dev lo
    ip -n tenant2 address add "2001:db8:2:$n::1/128" dev lo nodad

    # The daemons allocate tables with a place for every descriptor that they could open.
    ulimit -Sn 1024
    # A receive buffer of 90 MB, as the package sets it: with the default one, zebra
    # misses some of thousands of MACs that arrive at once.
    "$frr_lib/zebra" -d -n -s 90000000 -N "$(name "$n")" -f "$etc/zebra.conf" -i "$run/zebra.pid" \
        -z "$run/zserv.api" --vty_socket "$run"
    "$frr_lib/bgpd" -d -N "$(name "$n")" -f "$etc/bgpd.conf" -i "$run/bgpd.pid" \
        -z "$run/zserv.api" --vty_socket "$run"
}

make_port() { # N NAME MAC
    local n=$1 port=$2 mac=$3 hosts
    hosts=$(name "$n")-hosts
    ip -n "$(name "$n")" link add name "$port" address "$mac" type veth peer name "far-$port" netns "$hosts"
    ip netns exec "$hosts" sysctl -qw "net.ipv6.conf.far-$port.disable_ipv6=1"
    ip -n "$hosts" link set "far-$port" up
}

make_vtep() { # N
    local n=$1 ns hosts
    ns=$(name "$n")
    hosts=$ns-hosts
    install -d -m 755 "$lab/etc/$ns"
    install -d -m 755 -o frr -g frr "$(sockets "$n")"
    ln -sfn "$(sockets "$n")" "$frr_run/$ns" # for vtysh -N
    configure "$n"
    make_namespace "$ns"
    ip -n "$ns" link set lo up
    make_namespace "$hosts"
    ip -n "$hosts" link set lo up
    # Each host answers only for its own address.
    ip netns exec "$hosts" sysctl -qw net.ipv4.conf.all.arp_ignore=1
    ip -n "$fabric" link add name "to-vtep$n" type veth peer name uplink netns "$ns"
    ip -n "$fabric" link set "to-vtep$n" master fabric up
    ip -n "$ns" link set uplink address "02:00:00:00:00:0$n" up
    ip -n "$ns" address add "10.0.0.$n/24" dev uplink
    make_port "$n" host10 "02:00:10:00:0$n:fc"
    make_port "$n" host20 "02:00:20:00:0$n:fc"
    make_port "$n" host4098 "02:40:98:00:0$n:fc"
    ip netns exec "$ns" "$BASH" "$0" __vtep "$n" >>"$lab/log/start.log" 2>&1 || {
        die "vtep$n did not start: $(tail -n 1 "$lab/log/start.log")"
    }
}

established() { # N PEERS
    show "$1" 'show bgp l2vpn evpn summary json' |
        jq -e --argjson peers "$2" '[.peers[] | select(.state == "Established")] | length >= $peers'
}
