# The hosts, which each VTEP learns from its own ports. Sourced by evpn-lab.
# shellcheck shell=bash

# Host I of VTEP N in VNI 10. The gateway sends it one datagram of each family:
# from the answers to its ARP and ND requests the gateway learns the addresses, and
# the bridge the MAC.
real_host() { # N I
    local n=$1 i=$2 hosts
    hosts=$(name "$n")-hosts
    ip -n "$hosts" link add link far-host10 name "real$i" address "02:00:10:00:0$n:0$i" type macvlan mode bridge
    ip -n "$hosts" link set "real$i" addrgenmode none
    ip -n "$hosts" link set "real$i" up
    ip -n "$hosts" address add "192.168.10.$n$i/32" dev "real$i"
    ip -n "$hosts" address add "2001:db8:10::$n$i/128" dev "real$i" nodad
    in_vrf "$n" tenant1 bash -c "
        echo >/dev/udp/192.168.10.$n$i/9
        echo >/dev/udp/2001:db8:10::$n$i/9"
}

# Every VTEP has the addresses of all six hosts.
hosts_known() {
    local n
    for n in "${vteps[@]}"; do
        show "$n" 'show evpn arp-cache vni 10 json' |
            jq -e '[to_entries[] | select(.key | test("^(192.168.10.|2001:db8:10::)[123][12]$"))] | length == 12' || return 1
    done
}

# A MAC behind a port: "dynamic" (the default) is what learning would create.
fdb() { # N VRF PORT MAC [KIND...]
    local n=$1 vrf=$2 port=$3 mac=$4
    shift 4
    in_vrf "$n" "$vrf" bridge fdb replace "$mac" dev "$port" master "${@:-dynamic}"
}

# An ARP or ND entry of the gateway.
neigh() { # N VRF VNI IP MAC [STATE]
    in_vrf "$1" "$2" ip neighbour replace "$4" lladdr "$5" dev "br$3" nud "${6:-permanent}"
}

sees() { # N VNI MAC VTEP: is the MAC remote, behind that VTEP?
    show "$1" "show evpn mac vni $2 mac $3 json" |
        jq -e --arg mac "$3" --arg vtep "$4" '.[$mac].remoteVtep == $vtep'
}

# The MAC (and its IP, if it has one) appears at one VTEP after the other, each time
# after all other VTEPs know where it was before.
move() { # MAC IP|- N...
    local mac=$1 ip=$2 n other
    shift 2
    for n in "$@"; do
        fdb "$n" default host4098 "$mac"
        [[ $ip == - ]] || neigh "$n" default 4098 "$ip" "$mac"
        for other in "${vteps[@]}"; do
            [[ $other == "$n" ]] || wait_for "$mac to be seen at vtep$n by vtep$other" \
                sees "$other" 4098 "$mac" "10.0.0.$n"
        done
    done
}

populate() {
    local n i
    for n in "${vteps[@]}"; do
        for i in 1 2; do real_host "$n" "$i"; done
        fdb "$n" tenant1 host10 "02:00:10:00:0$n:a1"
        fdb "$n" tenant1 host10 "02:00:10:00:0$n:a2" static
        fdb "$n" tenant1 host10 "02:00:10:00:0$n:a3" sticky static
        for i in 1 2 3; do
            fdb "$n" tenant1 host20 "02:00:20:00:0$n:0$i"
            neigh "$n" tenant1 20 "192.168.20.$n$i" "02:00:20:00:0$n:0$i"
            neigh "$n" tenant1 20 "2001:db8:20::$n$i" "02:00:20:00:0$n:0$i"
            fdb "$n" default host4098 "02:40:98:00:0$n:0$i"
        done
        neigh "$n" default 4098 "10.98.0.${n}1" "02:40:98:00:0$n:01"
        neigh "$n" default 4098 "10.98.0.${n}2" "02:40:98:00:0$n:02" stale
        # An ARP entry whose MAC no bridge has learned.
        neigh "$n" tenant1 20 "192.168.20.${n}9" "02:00:20:00:0$n:99"
    done
    wait_for "the hosts of VNI 10" hosts_known
    move 02:40:98:00:ee:01 - 1 2 3
    move 02:40:98:00:ee:02 10.98.0.102 1 2 1
    move 02:40:98:00:ee:03 - 1 2 1 2 1 2 1 2 1 2 1
    # A local ARP entry for a remote MAC.
    wait_for "vtep2's MAC" sees 1 4098 02:40:98:00:02:03 10.0.0.2
    neigh 1 default 4098 10.98.0.23 02:40:98:00:02:03
    segment
}
