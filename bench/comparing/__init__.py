"""The parts of bench/compare.

Measuring starts programs and times them, tools knows which programs there are, snapshots
makes what they read. Comparison, targets and plot are what is done with them, one module for
each way to call bench/compare.
"""
