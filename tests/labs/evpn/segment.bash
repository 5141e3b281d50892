# The Ethernet segment that two VTEPs share. Sourced by evpn-lab.
# shellcheck shell=bash

# The Ethernet segment of VTEPs 2 and 3, and one host behind it.
segment() {
    local n
    for n in 2 3; do
        make_port "$n" segment "02:40:98:00:0$n:fb"
        ip -n "$(name "$n")" link set segment addrgenmode none
        ip -n "$(name "$n")" link set segment master br4098
        ip -n "$(name "$n")" link set segment up
        fdb "$n" default segment 02:40:98:00:e5:01
        neigh "$n" default 4098 10.98.0.150 02:40:98:00:e5:01
    done
    segment_speaker
    wait_for "the Ethernet segment at vtep1" segment_complete
}

segment_complete() {
    show 1 'show evpn es detail json' | jq -e '.[0].vteps | length == 2'
}

bytes() { # HEX...: to standard output
    local hex
    hex=$(printf '%s' "$@")
    printf '%b' "$(fold -w 2 <<<"$hex" | sed 's/^/\\x/' | tr -d '\n')"
}

message() { # TYPE HEX: one BGP message
    bytes "$(printf 'f%.0s' {1..32})" "$(printf '%04x%02x' $((19 + ${#2} / 2)) "$1")" "$2"
}

# Auto-discovery route (EVPN type 1) of the segment, on behalf of a VTEP.
auto_discovery() { # N ETHERNET-TAG LABEL
    local esi=0302409800e500000001 origin as_path local_pref communities reach attributes
    origin=40010100
    as_path=400200
    local_pref=40050400000064
    # Route target 65000:4098, ESI label, VXLAN encapsulation.
    communities=c010180002fde8000010020601000000000000030c000000000008
    reach=0019 # EVPN: AFI 25, SAFI 70
    reach+=46040a00000${1}00
    reach+=0119 # route type 1, 25 bytes: distinguisher 10.0.0.N:99, segment, tag, label
    reach+=00010a00000${1}0063$esi$2$3
    attributes=$origin$as_path$local_pref$communities
    attributes+=$(printf '800e%02x' $((${#reach} / 2)))$reach
    message 2 "0000$(printf '%04x' $((${#attributes} / 2)))$attributes"
}

# A minimal BGP speaker, 10.0.0.9, for the routes that VTEPs 2 and 3 would announce
# if the segment had a VLAN. It keeps its session open by reading what arrives;
# with a hold time of zero no keepalives are due.
segment_speaker() {
    local n
    ip -n "$fabric" address add 10.0.0.9/24 dev fabric
    # Open: version 4, AS 65000, hold time 0, EVPN capability.
    {
        message 1 04fde800000a000009080206010400190046
        message 4 ''
        for n in 2 3; do
            auto_discovery "$n" ffffffff 000000
            auto_discovery "$n" 00000000 001002
        done
    } >"$lab/run/speaker.bgp"
    # shellcheck disable=SC2016 # expanded by that shell
    ip netns exec "$fabric" bash -c '
        exec 3<>/dev/tcp/10.0.0.1/179
        cat "$1" >&3
        exec -a "$2" cat <&3 >/dev/null' - "$lab/run/speaker.bgp" "$lab/speaker" </dev/null >>"$lab/log/start.log" 2>&1 &
    echo $! >"$lab/run/speaker.pid"
}
