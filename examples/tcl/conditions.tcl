#!/usr/bin/tclsh8.6
# Checks the breakpoint conditions of a file, one a line, and reports what is wrong with them.
#
#     conditions.tcl FILE

package require korvane_gen

proc described {reports} {
    lmap report $reports {
        dict with report {string cat "$condition ($source:$line)"}
    }
}

set file [open [lindex $argv 0]]
# A condition may hold any bytes: each is a character on its way.
encoding system iso8859-1
fconfigure $file -encoding iso8859-1
fconfigure stdout -encoding iso8859-1
set wrong 0
for {set number 1} {[gets $file line] >= 0} {incr number} {
    set complaints {}
    try {
        puts "$number: [gen condition $line]"
    } trap {KORVANE CONDITION} {message options} {
        lassign [dict get $options -errorcode] - - diagnostics prefix reports
        set complaints [concat $diagnostics [described $reports]]
    } trap {KORVANE INTERNAL} {message options} {
        set complaints [described [lindex [dict get $options -errorcode] 2]]
    } trap {KORVANE ARGUMENT} {} {
        set complaints {{Null character}}
    }
    incr wrong [expr {[llength $complaints] != 0}]
    foreach complaint $complaints {
        puts "$number: $complaint: $line"
    }
}
exit [expr {$wrong != 0}]
