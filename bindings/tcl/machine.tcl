# Time, machine, notices.

proc ::korvane_gen::sub::units {args} {
    switch -- $args {
        time {c::time_units}
        frequency {c::frequency_units}
        default {wrong units}
    }
}

proc ::korvane_gen::sub::time {args} {
    lassign $args what argument
    # The first word, and how many words there are in all.
    switch -- $what[llength $args] {
        now1 {return [lindex [c::now] 0]}
        date2 {return [c::date $argument]}
        format2 {return [c::format_now $argument]}
        elapsed2 {return [c::elapsed $argument]}
        default {wrong time}
    }
}

proc ::korvane_gen::sub::machine {args} {
    lindex [c::machine {*}[options machine {} $args 0 1]] 0
}

proc ::korvane_gen::sub::modules {args} {
    options modules {-tag 1 -phase 1 -modules 0 -details 0 -memory 0} $args 0 0
    set words [list [dict get [dict merge {-tag tcl} $given] -tag]]
    foreach option {-modules -details -memory} {
        lappend words [dict exists $given $option]
    }
    if {[dict exists $given -phase]} {
        lappend words [dict get $given -phase]
    }
    column [c::usage_report {*}$words] line
}

# A paragraph, or with a prefix the lines.
proc ::korvane_gen::sub::legal {args} {
    lassign [options legal {-prefix 1} $args 1 1] name
    set number [lsearch -exact {banner trademark warning bitstream} $name]
    if {$number < 0} {
        wrong legal
    }
    if {[dict exists $given -prefix]} {
        return [column [c::notice_lines $number [dict get $given -prefix]] line]
    }
    c::notice $number
}

proc ::korvane_gen::sub::do-not-edit {args} {
    if {[llength $args] > 1} {
        wrong do-not-edit
    }
    column [c::do_not_edit [lindex $args 0]] line
}

proc ::korvane_gen::sub::stopwatch {args} {
    options stopwatch {} $args 0 0
    ::korvane_gen::Stopwatch new
}

oo::class create ::korvane_gen::Stopwatch {
    variable handle
    constructor {} {set handle [::korvane_gen::c::stopwatch_create]}
    destructor {if {[info exists handle]} {::korvane_gen::c::stopwatch_free $handle}}
    method start {} {::korvane_gen::c::stopwatch_start $handle; return}
    method stop {} {::korvane_gen::c::stopwatch_stop $handle; return}
    method reset {} {::korvane_gen::c::stopwatch_reset $handle; return}
    method seconds {} {::korvane_gen::c::stopwatch_seconds $handle}
    method lap {} {::korvane_gen::c::stopwatch_lap $handle}
}
