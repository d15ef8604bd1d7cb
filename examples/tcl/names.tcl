#!/usr/bin/tclsh8.6
# Sorts the names of a netlist, which stand on standard input, as people count.
#
#     names.tcl <names

package require korvane_gen

# A name may hold any bytes: each is a character on its way.
encoding system iso8859-1
fconfigure stdin -encoding iso8859-1
fconfigure stdout -encoding iso8859-1
set names {}
while {[gets stdin name] >= 0} {
    lappend names $name
}
foreach name [gen lexsort $names] {
    puts $name
}
