# What an operator would write instead of using the command: the received unicast MACs, sorted.
import json
import sys

with open(sys.argv[1], encoding="utf-8") as file:
    received = json.load(file)["received"]
others = dict(received.get("sources", {}))
for name, evpn in received.get("evpn", {}).items():
    others[name] = {vni: {"unicast": hosts} for vni, hosts in evpn.get("hosts", {}).items()}
for directory in received.get("switches", {}), others:
    for name, vnis in sorted(directory.items()):
        for vni, tables in sorted(vnis.items(), key=lambda item: int(item[0])):
            for mac, entry in sorted(tables.get("unicast", {}).items()):
                print(name, vni, mac, entry["vtep"], entry.get("moves", 0), sep="\t")
