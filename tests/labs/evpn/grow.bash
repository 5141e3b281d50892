# Adds any number of VNIs and MACs. Sourced by evpn-lab.
# shellcheck shell=bash

grown_links() { # N VNIS: ip commands for the VNIs of one VTEP
    awk -v n="$1" -v vnis="$2" 'BEGIN {
        for (vni = 10001; vni <= 10000 + vnis; ++vni) {
            print "link add name br" vni " type bridge stp_state 0 ageing_time 100000000"
            print "link add name vx" vni " type vxlan id " vni " local 10.0.0." n " dstport 4789 nolearning"
            print "link add name host" vni " type veth peer name far" vni
            split("br vx host far", kinds, " ")
            for (k = 1; k <= 4; ++k) print "link set " kinds[k] vni " addrgenmode none"
            print "link set vx" vni " master br" vni
            print "link set vx" vni " type bridge_slave neigh_suppress on learning off"
            print "link set host" vni " master br" vni
            for (k = 1; k <= 4; ++k) print "link set " kinds[k] vni " up"
        }
    }'
}

grown_macs() { # VNIS MACS: bridge commands
    awk -v vnis="$1" -v macs="$2" 'BEGIN {
        for (i = 0; i < macs; ++i) {
            v = i % vnis
            k = int(i / vnis)
            printf "fdb add 02:77:%02x:%02x:%02x:%02x dev host%d master dynamic\n",
                v, int(k / 65536), int(k / 256) % 256, k % 256, 10001 + v
        }
    }'
}

grown() { # MACS
    show 1 'show evpn vni json' |
        jq -e --argjson macs "$1" '[.[] | select(.vni > 10000) | .numMacs] | add == $macs'
}

grow() { # VNIS MACS
    local vnis=$1 macs=$2 n
    if [[ ! $vnis =~ ^[0-9]+$ || ! $macs =~ ^[0-9]+$ ]] || ((vnis < 1 || vnis > 256 || macs / vnis > 16777216)); then
        die "grow takes 1 to 256 VNIs, and up to 16777216 MACs for each"
    fi
    [[ -e $(sockets 1)/zebra.pid ]] || die "vtep1 is down: run evpn-lab up first"
    for n in 1 2; do grown_links "$n" "$vnis" | ip -n "$(name "$n")" -batch -; done
    grown_macs "$vnis" "$macs" | bridge -n "$(name 2)" -batch -
    patience=$((60 + macs / 1000))
    wait_for "vtep1 to have all MACs" grown "$macs"
}
