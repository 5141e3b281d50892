"""What vxshow is to show of live sources, worked out a second time.

Shares no code with it: plain dicts and sets, from what the sources' own clients print.
"""
