"""The parts of bench/compare.

Module measuring starts programs and times them, tools knows the programs, snapshots makes
their input. The modules comparison, targets and plot use these, one for each way to call
bench/compare.
"""
