# Conditions, messages, text, time, machine, notices.

proc rewritten {condition} {
    set reported {}
    set answer [asked reported {gen condition -diagnostics -- $condition}]
    if {[llength $reported]} {
        # No dictionary, but what stands in front of its diagnostics.
        set answer [dict create prefix [lindex $answer 0] diagnostics [lines_of [lindex $answer 1]] reports {}]
    }
    lappend reported {*}[lmap report [dict get $answer reports] {dict get $report condition}]
    set times {}
    foreach one $reported {dict incr times $one}
    dict create condition [s $condition] prefix [s [dict get $answer prefix]] \
        diagnostics [texts [dict get $answer diagnostics]] internal_errors [d $times]
}
proc is_clean {record} {expr {[dict get $record diagnostics] eq "\[\]"}}
proc tree_of {record condition} {
    if {[is_clean $record] && [dict get $record internal_errors] eq [d {}]} {gen condition -tree -- $condition}
}
proc answer_condition {} {
    parse {--tokens {tokens 0} --tree {tree 0} --stdin {stdin 0}}
    want 0 1
    if {[has stdin] == [llength $::rest] || ([has stdin] && ([has tokens] || [has tree]))} {error usage}
    if {[has stdin]} {
        set all [lmap line [lines_of [input]] {rewritten $line}]
        set prefixes [lmap record $all {dict get $record prefix}]
        set clean [expr {0 ni [lmap record $all {is_clean $record}]}]
        set all [lmap record $all {d [dict remove $record prefix] [dict keys $record]}]
        return [list $clean [d [dict create prefixes [l $prefixes] conditions [l $all]] {prefixes conditions}]]
    }
    lassign $::rest condition
    set record [rewritten $condition]
    if {[has tokens]} {dict set record tokens [rows [gen condition -tokens -- $condition]]}
    if {[has tree]} {
        dict set record tree [texts [lmap node [tree_of $record $condition] {
            set depth [dict get $node depth]
            string cat [string repeat "  " [expr {min($depth, 40)}]] [expr {$depth > 40 ? "\[$depth\] " : ""}] \
                [dict get $node text]
        }]]
    }
    list [is_clean $record] [d $record [dict keys $record]]
}
proc answer_message {} {
    parse {--inserts {inserts 0}}
    want 1
    set arguments [lassign $::rest format]
    set inserts [lmap row [gen message -inserts $format] {
        dict set row argument [lindex $arguments [dict get $row insert]-1]
    }]
    list 1 [d [dict create inserts [rows $inserts] text [s [gen message $format {*}$arguments]]] {inserts text}]
}
proc answer_text {} {
    set ::arguments [lassign $::arguments what]
    answer_text_$what
}
proc answer_text_compare {} {
    parse {-i {-nocase 0} --ignore-case {-nocase 0} -b {bytes 0} --bytes {bytes 0}}
    want 2 2
    set order [gen [expr {[has bytes] ? "compare" : "lexcompare"}] {*}[if {[has -nocase]} {list -nocase}] {*}$::rest]
    list [expr {$order == 0}] [d [dict create first [lindex $::rest 0] second [lindex $::rest 1] order [
        expr {$order == 0 ? "equal" : $order < 0 ? "before" : "after"}]]]
}
proc answer_text_sort {} {
    parse {-i {-nocase 0} --ignore-case {-nocase 0} -r {-decreasing 0} --reverse {-decreasing 0}}
    set lines [lines_of [input]]
    list 1 [d [dict create lines [texts [gen lexsort {*}[dict keys $::options] -- $lines]]] lines]
}
proc answer_text_number {} {
    parse {-r {radix 1} --radix {radix 1}}
    want 1 1
    set radix [expr {[has radix] ? [dict get $::options radix] : 10}]
    set read [gen number -radix $radix -- {*}$::rest]
    if {$read eq ""} {
        gen number -radix $radix 1
        return [list 0 [d [dict create value "" digits "" radix $radix unread [
            regsub {^[ \t\n]*[-+]?} [lindex $::rest 0] ""]]]]
    }
    dict set read radix $radix
    dict set read unread [string range [lindex $::rest 0] [dict get $read used] end]
    list 1 [d [dict remove $read used]]
}
proc answer_text_real {} {
    parse {}
    want 1
    set all 1
    set rows [lmap text $::rest {
        set read [gen real -- $text]
        if {$read eq ""} {
            set all 0
            set read {value "" used 0}
        }
        # JSON has no other numbers.
        set value [expr {[dict get $read value] in {Inf -Inf NaN} ? "" : [dict get $read value]}]
        dict create text $text value $value unread [string range $text [dict get $read used] end]
    }]
    list $all [d [dict create numbers [rows $rows]] numbers]
}
proc changed {command key text} {
    list 1 [d [dict create given $text $key [gen {*}$command -- $text]]]
}
proc change_texts {known command key} {
    parse [dict merge $known {-0 {null 0} --null {null 0}}]
    want 1
    lappend command {*}[dict keys $::options -*]
    if {"-" in $::rest} {return [answer_each $::rest [list changed $command $key]]}
    list 1 [d [dict create ${key}s [texts [lmap text $::rest {gen {*}$command -- $text}]]] ${key}s]
}
proc answer_text_fold {} {change_texts {-u {-upper 0} --upper {-upper 0}} fold text}
proc answer_text_trim {} {change_texts {-w {-white-space 0} --white-space {-white-space 0}} trim text}
proc answer_text_sanitise {} {change_texts {} sanitise name}
proc matched {command name} {
    set matches [expr {[gen {*}$command $name] ne ""}]
    incr ::matching $matches
    list 1 [d [dict create name $name matches $matches]]
}
proc answer_text_wildcard {} {
    parse {-p {-part 0} --part {-part 0}}
    want 1
    set names [lassign $::rest pattern]
    set command [list wildcard {*}[dict keys $::options] -- $pattern]
    if {"-" in $names} {
        set ::matching 0
        answer_each $names [list matched $command]
        return [list [expr {$::matching > 0}] ""]
    }
    set answer [dict create expression [s [gen {*}$command]]]
    set matches {}
    if {[llength $names]} {
        set matches [gen {*}$command {*}$names]
        dict set answer matches [texts $matches]
    }
    list [expr {![llength $names] || [llength $matches]}] [d $answer [dict keys $answer]]
}
proc answer_text_checksum {} {
    parse {-s {sanitise 0} --sanitise {sanitise 0} --file {file 1}}
    if {[has file]} {set ::rest [list [input [dict get $::options file]]]}
    if {![llength $::rest]} {set ::rest [list [input]]}
    set sum [expr {[has sanitise] ? [gen sanitise -checksum {*}$::rest] : [gen checksum {*}$::rest]}]
    list 1 [d [dict create hexadecimal [format 0x%08x $sum] decimal [expr {$sum >> 31 ? $sum - (1 << 32) : $sum}]]]
}
proc answer_text_hash-size {} {
    parse {}
    want 1
    set reported {}
    set sizes [lmap number $::rest {
        set before [llength $reported]
        set size [asked reported {gen hash-size $number}]
        expr {[llength $reported] > $before ? "" : $size}
    }]
    list [expr {![llength $reported]}] [d [dict create sizes [texts $sizes]] sizes]
}
proc answer_units {} {
    parse {}
    want 0 0
    list 1 [d [dict create time_units [rows [gen units time]] frequency_units [rows [gen units frequency]]] {time_units frequency_units}]
}
proc answer_time {} {
    set ::arguments [lassign $::arguments what]
    if {$what eq "now"} {return [list 1 [d [gen time now]]]}
    parse {}
    want 1
    if {$what eq "format"} {
        set text [gen time format {*}$::rest]
        return [list [expr {$text ne ""}] [d [dict create text $text]]]
    }
    set key [expr {$what eq "date" ? "date_and_time" : "elapsed"}]
    set all [lmap seconds $::rest {dict create seconds $seconds $key [gen time $what $seconds]}]
    set name [expr {$what eq "date" ? "dates" : "durations"}]
    list 1 [d [dict create $name [rows $all]] $name]
}
proc answer_machine {} {
    parse {--host {host 1}}
    want 0 0
    set found [gen machine {*}[dict values $::options]]
    list [expr {"" ni [dict values $found]}] [d $found]
}
proc answer_modules {} {
    parse {--profile-dll-usage {-modules 0} --list-dll-details {-details 0} --report-modules-flow {-memory 0} --tag {-tag 1} --phase {-phase 1}}
    want 0 0
    set words {}
    dict for {name value} [dict merge {-tag gen_query} $::options] {
        lappend words $name {*}[if {$name in {-tag -phase}} {list $value}]
    }
    set lines [gen modules {*}$words]
    list [llength $lines] [d [dict create lines [texts $lines]] lines]
}
proc answer_legal {} {
    parse {--notice {notice 1} --prefix {prefix 1}}
    want 0 0
    set answer {}
    foreach name [expr {[has notice] ? [dict get $::options notice] : {banner trademark warning bitstream}}] {
        dict set answer $name [expr {[has prefix] ? [texts [gen legal -prefix [dict get $::options prefix] $name]]
                                                  : [s [gen legal $name]]}]
    }
    list 1 [d $answer [dict keys $answer]]
}
proc answer_do-not-edit {} {
    parse {--prefix {prefix 1}}
    want 0 0
    list 1 [d [dict create lines [texts [gen do-not-edit {*}[dict values $::options]]]] lines]
}
