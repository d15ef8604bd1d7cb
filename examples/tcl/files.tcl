#!/usr/bin/tclsh8.6
# Lists every file that a design unit is made of, who supplied it, and what it shadows.
#
#     files.tcl ROOT PROJECT UNIT...

package require korvane_gen

set units [lassign $argv root project]
gen start -root $root
gen project -project $project -db $project/db -project-libs lib
foreach unit $units {
    foreach source [gen sources $unit] {
        puts [format "%-10s%-20s%s" $unit [dict get $source from] [dict get $source path]]
        foreach asked [gen find -all [file tail [dict get $source path]]] {
            if {[dict get $asked standing] eq "shadowed"} {
                puts [format "%-10s  shadows %s: %s" "" [dict get $asked group] [dict get $asked path]]
            }
        }
    }
}
