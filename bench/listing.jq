# What an operator would write instead of using the command: the received unicast MACs, sorted.
# keys sorts, and canonical MACs sort as text in the order of their bytes.
def rows:
  keys[] as $name | .[$name]
  | (keys | sort_by(tonumber))[] as $vni | .[$vni].unicast // {}
  | keys[] as $mac | .[$mac]
  | [$name, $vni, $mac, .vtep, .moves // 0] | @tsv;

.received
| (.switches // {} | rows),
  ((.sources // {}) + (.evpn // {} | map_values(.hosts // {} | map_values({unicast: .}))) | rows)
