# Conditions, messages, comparison, numbers, wildcards, checksums.

proc ::korvane_gen::sub::condition {args} {
    lassign [options condition {-tokens 0 -tree 0 -diagnostics 0} $args 1 1] condition
    if {[dict size $given] > 1} {
        wrong condition
    }
    if {[dict exists $given -tokens]} {
        return [c::condition_tokens $condition]
    }
    lassign [c::condition $condition] prefix text
    set diagnostics [split [string trimright $text \n] \n]
    if {[dict exists $given -diagnostics]} {
        return [dict create prefix $prefix diagnostics $diagnostics reports [c::reports]]
    }
    if {[llength $diagnostics]} {
        return -code error -errorcode [list KORVANE CONDITION $diagnostics $prefix [c::reports]] \
            [join $diagnostics "; "]
    }
    if {[dict exists $given -tree]} {
        return [c::condition_tree $condition]
    }
    return $prefix
}

proc ::korvane_gen::sub::message {args} {
    if {[lindex $args 0] eq "-inserts"} {
        return [c::message_inserts [lindex [options message {-inserts 0} $args 1 1] 0]]
    }
    if {![llength $args]} {
        wrong message
    }
    c::message {*}$args
}

proc ::korvane_gen::sub::lexsort {args} {
    lassign [options lexsort {-nocase 0 -decreasing 0 -unique 0} $args 1 1] list
    set command [expr {[dict exists $given -nocase] ? {gen lexcompare -nocase} : {gen lexcompare}}]
    dict unset given -nocase
    lsort {*}[dict keys $given] -command $command $list
}

proc ::korvane_gen::sub::compare {args} {
    lassign [options compare {-nocase 0} $args 2 2] first second
    c::compare_bytes $first $second [dict exists $given -nocase]
}

proc ::korvane_gen::sub::fold {args} {
    lassign [options fold {-upper 0} $args 1 1] text
    c::fold $text [dict exists $given -upper]
}

proc ::korvane_gen::sub::trim {args} {
    lassign [options trim {-white-space 0} $args 1 1] text
    c::trim $text [dict exists $given -white-space]
}

# What is read, written in the radix, and how many bytes that took; empty for no number.
proc ::korvane_gen::sub::number {args} {
    lassign [options number {-radix 1} $args 1 1] text
    set read [c::read_integer $text]
    if {$read eq ""} {
        return
    }
    lassign $read value used
    set radix [dict get [dict merge {-radix 10} $given] -radix]
    dict create value $value digits [c::write_integer $value $radix] used $used
}

proc ::korvane_gen::sub::real {args} {
    set read [c::read_real [lindex [options real {} $args 1 1] 0]]
    if {$read eq ""} {
        return
    }
    dict create value [lindex $read 0] used [lindex $read 1]
}

# The regular expression, or which of the names match.
proc ::korvane_gen::sub::wildcard {args} {
    set names [lassign [options wildcard {-part 0} $args 1 [llength $args]] pattern]
    set part [dict exists $given -part]
    if {![llength $names]} {
        return [c::wildcard $pattern $part]
    }
    lmap name $names {if {[c::wildcard_matches $pattern $part $name]} {set name} continue}
}

proc ::korvane_gen::sub::sanitise {args} {
    lassign [options sanitise {-checksum 0} $args 1 1] name
    if {[dict exists $given -checksum]} {c::checksum_sanitised $name} {c::sanitise $name}
}

proc ::korvane_gen::sub::hash-size {args} {
    c::hash_size [lindex [options hash-size {} $args 1 1] 0]
}
