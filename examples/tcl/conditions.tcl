#!/usr/bin/tclsh8.6
# Checks the breakpoint conditions of a file, one a line, and reports what is wrong with them.
#
#     conditions.tcl FILE

package require korvane_gen

set file [open [lindex $argv 0]]
set wrong 0
for {set number 1} {[gets $file line] >= 0} {incr number} {
    try {
        puts "$number: [gen condition $line]"
    } trap {KORVANE CONDITION} {message options} {
        incr wrong
        foreach diagnostic [lindex [dict get $options -errorcode] 2] {
            puts "$number: $diagnostic: $line"
        }
    }
}
exit [expr {$wrong != 0}]
