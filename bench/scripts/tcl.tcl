#!/usr/bin/tclsh8.6
# Measures calls of korvane_gen beside the cheapest call that Tcl has of the same library function, and
# beside one of a command of the same types that does nothing. The peer calls the library too: what that takes
# is no cost of the package, and a call of nothing could not be reached by any.
#
#     tcl.tcl BUILD SUITE
#
# A round takes turns; the figures are nanoseconds, of the quickest round of each: many short ones, some of which
# nobody disturbs even on a busy machine. The exit status is 1 where a call costs more than the limit times the
# cheapest one.

lassign $argv build suite
lappend auto_path $build/tcl
package require korvane_gen
load $build/lib/libcheapest_tcl.so Cheapest
set limit 1.3
set rounds 1000
set calls 2000

gen start -root $suite
gen project -project $suite/project

proc least {numbers} {
    ::tcl::mathfunc::min {*}$numbers
}
# A procedure that makes the call, compiled as scripts are; its cost in nanoseconds.
proc loop {name call} {
    proc $name {count} "for {set i 0} {\$i < \$count} {incr i} {$call}"
}
proc cost {name} {
    set start [clock microseconds]
    $name $::calls
    expr {([clock microseconds] - $start) * 1000.0 / $::calls}
}

set slow 0
puts [format "%-20s%8s%10s%7s%9s" call ours cheapest ratio nothing]
foreach {what ours peer nothing} {
    "cached lookup"      {gen cached counter.v}             {found counter.v}           {nothing_found counter.v}
    "natural comparison" {gen lexcompare data\[10] data\[9]} {compared data\[10] data\[9]} {nothing_compared data\[10] data\[9]}
    "checksum"           {gen checksum counter.v}           {summed counter.v}          {nothing_summed counter.v}
} {
    foreach name {a b c} call [list $ours $peer $nothing] {
        loop $name $call
        set costs($name) {}
    }
    for {set round 0} {$round < $rounds} {incr round} {
        foreach name {a b c} {
            lappend costs($name) [cost $name]
        }
    }
    set ratio [expr {[least $costs(a)] / [least $costs(b)]}]
    if {$ratio > $limit} {
        set slow 1
    }
    puts [format "%-20s%8.1f%10.1f%7.2f%9.1f" $what [least $costs(a)] [least $costs(b)] $ratio \
        [least $costs(c)]]
}
exit $slow
