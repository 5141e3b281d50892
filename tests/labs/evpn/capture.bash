# Saves what each VTEP shows. Sourced by evpn-lab.
# shellcheck shell=bash

show_commands=(
    'show evpn'
    'show evpn vni'
    'show evpn vni detail'
    'show evpn mac vni all'
    'show evpn mac vni all detail'
    'show evpn arp-cache vni all'
    'show evpn arp-cache vni all detail'
    'show evpn rmac vni all'
    'show evpn next-hops vni all'
    'show evpn es detail'
    'show vrf vni'
    'show bgp l2vpn evpn summary'
    'show bgp l2vpn evpn vni'
    'show bgp l2vpn evpn route'
    'show bgp l2vpn evpn route detail'
    'show bgp l2vpn evpn es detail'
    'show ip route vrf all'
    'show ipv6 route vrf all'
)

capture() { # DIR
    local n dir command vrf
    for n in "${vteps[@]}"; do
        [[ -e $(sockets "$n")/zebra.pid ]] || die "vtep$n is down: run evpn-lab up first"
        dir=$1/vtep$n
        mkdir -p "$dir"
        for command in "${show_commands[@]}"; do
            show "$n" "$command json" >"$dir/${command// /-}.json" || die "vtep$n: '$command json' failed"
        done
        for vrf in default "${tenants[@]}"; do
            in_vrf "$n" "$vrf" bridge -j fdb show >"$dir/bridge-fdb-show.$vrf.json"
            in_vrf "$n" "$vrf" ip -j -d link show type vxlan >"$dir/ip-link-show-type-vxlan.$vrf.json"
            in_vrf "$n" "$vrf" ip -j neighbour show >"$dir/ip-neighbour-show.$vrf.json"
        done
    done
}

status() {
    local n
    for n in "${vteps[@]}"; do
        if [[ -e $(sockets "$n")/zebra.pid ]]; then
            echo "vtep$n: $(show "$n" 'show evpn vni json' |
                jq -r '[.[] | "\(.vni) (\(.type)) \(.numMacs) MACs \(.numArpNd) ARP/ND"] | join(", ")')"
        else
            echo "vtep$n: down"
        fi
    done
}
