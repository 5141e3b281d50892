"""An independent implementation of what vxshow has to show for live sources.

Shares no code with vxshow: plain dicts and sets, from what the sources' own clients print.
"""
