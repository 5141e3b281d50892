# Configuration of a VTEP's daemons. Sourced by evpn-lab.
# shellcheck shell=bash

configure() { # N
    local n=$1 peer vrf dir
    dir=$lab/etc/$(name "$n")
    {
        echo "hostname vtep$n"
        echo "log file $lab/log/$(name "$n")-zebra.log"
        echo "evpn mh startup-delay 0"
        if [[ $n != 1 ]]; then
            printf '%s\n' "interface segment" " evpn mh es-id 1" " evpn mh es-sys-mac 02:40:98:00:e5:00" "exit"
        fi
        printf '%s\n' "vrf tenant1" " vni 5001" "exit-vrf" "vrf tenant2" " vni 5002" "exit-vrf"
    } >"$dir/zebra.conf"
    {
        echo "hostname vtep$n"
        echo "log file $lab/log/$(name "$n")-bgpd.log"
        cat <<CONF
router bgp 65000
 bgp router-id 10.0.0.$n
 no bgp default ipv4-unicast
 neighbor fabric peer-group
 neighbor fabric remote-as 65000
 neighbor fabric timers 1 5
 neighbor fabric timers connect 1
 neighbor fabric advertisement-interval 0
CONF
        for peer in "${vteps[@]}"; do
            [[ $peer == "$n" ]] || echo " neighbor 10.0.0.$peer peer-group fabric"
        done
        if [[ $n == 1 ]]; then
            echo " neighbor 10.0.0.9 remote-as 65000"
            echo " neighbor 10.0.0.9 passive"
        fi
        echo " address-family l2vpn evpn"
        echo "  neighbor fabric activate"
        [[ $n != 1 ]] || echo "  neighbor 10.0.0.9 activate"
        cat <<CONF
  advertise-all-vni
  vni 10
   advertise-svi-ip
  exit-vni
  vni 20
   advertise-default-gw
  exit-vni
 exit-address-family
exit
CONF
        for vrf in "${tenants[@]}"; do
            cat <<CONF
router bgp 65000 vrf $vrf
 bgp router-id 10.0.0.$n
 address-family ipv4 unicast
  redistribute connected
  redistribute kernel
  maximum-paths ibgp 8
 exit-address-family
 address-family ipv6 unicast
  redistribute connected
  redistribute kernel
  maximum-paths ibgp 8
 exit-address-family
 address-family l2vpn evpn
  advertise ipv4 unicast
  advertise ipv6 unicast
 exit-address-family
exit
CONF
        done
    } >"$dir/bgpd.conf"
}
