#!/usr/bin/tclsh8.6
# Sorts the names of a netlist, which stand on standard input, as people count.
#
#     names.tcl <names

package require korvane_gen

puts [join [gen lexsort [split [string trimright [read stdin] \n] \n]] \n]
