# Undo files, flags, histograms.

set blanks " \t\r\n\v\f"
# A line's first word, and what stands behind it.
proc first_word {line} {
    set line [string trim $line $::blanks]
    regexp "^(\[^$::blanks\]*)\[$::blanks\]*(.*)$" $line -> word rest
    list $word $rest
}

# The conditions of what the step's calls report are added to "reported"; nothing for what is no step.
proc flag_step {flags word rest} {
    upvar 1 reported reported
    set mask ""
    if {[regexp {^0[xX]([0-9a-fA-F]+)$} $rest -> digits]} {
        scan $digits %llx mask
    } elseif {[regexp {^[0-9]+$} $rest]} {
        scan $rest %lld mask
    }
    switch -- $word {
        create {set mask [asked reported {$flags add $rest}]}
        destroy {
            set names [lmap slot [$flags slots] {dict get $slot name}]
            if {$mask eq "" || $rest in $names} {set mask [asked reported {$flags find $rest}]}
            asked reported {$flags remove $mask}
        }
        find {set mask [asked reported {$flags find $rest}]}
        name {if {$mask eq ""} return}
        stats {return [format "used %d, dirty %d, clean %d" {*}[dict values [$flags statistics]]]}
        slots {return [flag_states $flags]}
        default return
    }
    $flags describe $mask
}
proc flag_states {flags} {
    set states [join [lmap slot [$flags slots] {
        dict get {named # dirty x clean .} [dict get $slot state]
    }] ""]
    string trimright [regsub -all {.{8}} $states {& }]
}
proc answer_flags {} {
    parse {}
    want 0 0
    set flags [gen flags]
    set steps {}
    set clean 1
    foreach line [lines_of [input]] {
        lassign [first_word $line] word rest
        if {$word eq "" || [string match #* $word]} continue
        set reported {}
        set answer [flag_step $flags $word $rest]
        if {$answer eq ""} {error "not a step: $line"}
        if {[llength $reported]} {set clean 0}
        set swept [lmap mask [$flags swept] {format 0x%x $mask}]
        lappend steps [d [dict create step [string trim $line $::blanks] answer $answer swept [texts $swept] \
            reported [texts $reported]] {swept reported}]
    }
    set slots [lmap slot [$flags slots] {dict set slot mask [format 0x%x [dict get $slot mask]]}]
    list $clean [d [dict create steps [l $steps] picture "\[[flag_states $flags]\]  # named  x dirty  . clean" \
        statistics [d [$flags statistics]] slots [rows $slots]] {steps statistics slots}]
}

# The sections of a script: title, description, and the commands with their comments.
proc sections_of {lines} {
    set sections {}
    foreach line $lines {
        lassign [first_word $line] word rest
        if {$word eq "" || [string match #* $word]} continue
        if {$word eq "section"} {
            lappend sections [dict create title $rest description "" commands {}]
            continue
        }
        if {![llength $sections]} {error "a section has to come first"}
        set section [lindex $sections end]
        set commands [dict get $section commands]
        switch -- $word {
            describe {dict set section description $rest}
            undo - redo {
                if {$rest eq ""} {error "no command"}
                dict lappend section commands [list $word $rest ""]
            }
            comment {
                if {![llength $commands]} {error "a comment without a command above it"}
                lset commands end 2 $rest
                dict set section commands $commands
            }
            default {error "unknown word $word"}
        }
        lset sections end $section
    }
    return $sections
}
proc answer_undo {} {
    parse {-d {directory 1} --directory {directory 1} -p {print 0} --print {print 0}}
    want 0 1
    set directory [expr {[has directory] ? [dict get $::options directory] : "."}]
    set file $directory/undo_redo.txt
    set undo [gen undo $directory]
    set counts {undo 0 redo 0}
    set recorded 0
    set dropped {}
    foreach section [sections_of [lines_of [input {*}$::rest]]] {
        dict with section {}
        if {$title eq "" || ![llength $commands]} {
            lappend dropped $title
            continue
        }
        incr recorded
        $undo section $title $description {
            foreach command $commands {
                dict incr counts [lindex $command 0]
                $undo {*}$command
            }
        }
    }
    set written [expr {$recorded && ![catch {$undo commit}]}]
    set record [dict create file $file written $written sections $recorded undo_commands [dict get $counts undo] \
        redo_commands [dict get $counts redo] sections_not_recorded [texts $dropped]]
    if {[has print] && $written} {dict set record text [string range [input $file] 0 end-1]}
    list $written [d $record sections_not_recorded]
}

proc is_finite {number} {expr {abs($number) <= 1.7976931348623157e308}}
# From the least to the greatest item, with some room around a single one; low and high are empty where not given.
proc range_of {items low high} {
    set least [::tcl::mathfunc::min {*}$items]
    set greatest [::tcl::mathfunc::max {*}$items]
    set from [expr {$low eq "" ? $least : $low}]
    set to [expr {$high eq "" ? $greatest : $high}]
    if {$from < $to} {return [list $from $to]}
    if {$low eq "" && $high ne ""} {set from $high}
    if {$high eq "" && $low ne ""} {set to $low}
    set room [expr {max(0.5, abs($from) * 1e-6)}]
    list [expr {$low eq "" ? $from - $room : $low}] [expr {$high eq "" ? $to + $room : $high}]
}
proc answer_histogram {} {
    parse {-l {low 1} --low {low 1} -u {high 1} --high {high 1} -b {bins 1} --bins {bins 1}}
    want 0 1
    lassign {"" "" 10} low high count
    if {[has low]} {set low [expr {double([dict get $::options low])}]}
    if {[has high]} {set high [expr {double([dict get $::options high])}]}
    if {[has bins]} {set count [dict get $::options bins]}
    if {$count < 1 || $count > 1000000} {error "bins"}
    set items [regexp -all -inline {[^ \t\r\n,;]+} [input {*}$::rest]]
    set finite [lmap item $items {expr {$item ne "nan" && [is_finite $item] ? double($item) : [continue]}}]
    if {![llength $finite] && ($low eq "" || $high eq "")} {return [list 0 [d {items 0}]]}
    lassign [range_of $finite $low $high] low high
    set bins [gen histogram $low $high $count]
    $bins add {*}$items
    set total [$bins size]
    set rows [lmap bin [$bins bins] {
        dict set bin percent [expr {$total ? 100.0 * [dict get $bin count] / $total : 0.0}]
    }]
    list [expr {$total != 0}] [d [dict create items $total low $low high $high bins [rows $rows] \
        not_counted [d [$bins outside]]] {bins not_counted}]
}
