# Answers a command line of gen_query through the Tcl package, as JSON whose scalars are all strings.
#
#     parity.tcl BUILD EXECUTABLE SUBCOMMAND ?ARGUMENT ...?
#
# The exit status is 0 for found or true, 1 for the contrary, 2 for an error.

set arguments [lassign $argv build executable]
lappend auto_path $build/tcl
package require korvane_gen
encoding system utf-8
foreach channel {stdin stdout} {
    fconfigure $channel -encoding utf-8 -translation lf
}

proc s {text} {
    return "\"[string map {\\ \\\\ \" \\\" \n \\n \r \\r \t \\t \x01 \\u0001} $text]\""
}
proc l {items} {return "\[[join $items ,]\]"}
proc texts {list} {l [lmap text $list {s $text}]}
# A dictionary; the keys in how have values that are JSON already.
proc d {dict {how {}}} {
    set members {}
    dict for {key value} $dict {
        lappend members "[s $key]:[expr {$key in $how ? $value : [s $value]}]"
    }
    return "{[join $members ,]}"
}
proc rows {list {keys {}}} {
    l [lmap row $list {d [expr {[llength $keys] ? [dict filter $row script {k v} {expr {$k in $keys}}] : $row}]}]
}
# Parts a command line into the options of the dictionary, with their values, and the rest.
proc parse {known} {
    global arguments options rest
    set options {}
    set rest {}
    set literally 0
    for {set i 0} {$i < [llength $arguments]} {incr i} {
        set word [lindex $arguments $i]
        if {$word eq "--json"} continue
        if {$word eq "--" && !$literally} {
            set literally 1
        } elseif {!$literally && [dict exists $known $word]} {
            lassign [dict get $known $word] name takes
            dict set options $name [expr {$takes ? [lindex $arguments [incr i]] : 1}]
        } elseif {!$literally && [regexp {^(--[^=]+)=(.*)$} $word -> option value] && [dict exists $known $option]} {
            dict set options [lindex [dict get $known $option] 0] $value
        } elseif {!$literally && [string match --* $word]} {
            error "unknown option $word"
        } else {
            lappend rest $word
        }
    }
}
proc has {name} {dict exists $::options $name}
proc want {least {most 1000}} {
    if {[llength $::rest] < $least || [llength $::rest] > $most} {error usage}
}
set project {--project {-project 1} --db {-db 1} --output {-output 1} --project-libs {-project-libs 1} --user-libs {-user-libs 1}}
set view {--trace {trace 0} --all {all 0}}
proc apply_project {} {
    gen project {*}[dict filter $::options key -*]
}

# The record of one name that was looked up by the words of a command.
proc looked_up {name command} {
    set path [expr {[has all] ? "" : [gen {*}$command $name]}]
    set command [lsearch -all -inline -not -exact $command -cached]
    set asked [gen {*}[linsert $command 1 [expr {[has all] ? "-all" : "-trace"}]] $name]
    set hits [lmap row $asked {expr {[dict get $row there] ? $row : [continue]}}]
    if {[has all] && [llength $hits]} {
        set path [dict get [lindex $hits 0] path]
    }
    set record [dict create name [s $name] path [s $path] group [s [expr {
        $path eq "" ? "" : [dict get [lindex $hits 0] group]}]]]
    if {[has trace] && ![has all]} {
        dict set record asked [rows $asked {group there path}]
    }
    if {[has all]} {
        dict set record candidates [rows $asked {standing group path}]
    }
    list $path [d $record [dict keys $record]]
}
proc look_up_all {command} {
    set files {}
    set paths {}
    foreach name $::rest {
        lassign [looked_up $name $command] path record
        lappend files $record
        if {$path ne ""} {lappend paths $path}
    }
    set answer [dict create files [l $files]]
    if {![has all]} {dict set answer paths [texts $paths]}
    list [expr {[llength $paths] == [llength $files]}] [d $answer {files paths}]
}

proc answer_where {} {
    parse {}
    want 0 0
    list 1 [d [gen where]]
}
proc answer_installation {} {
    parse {}
    want 0 0
    set found [gen installation]
    dict set found device_files [texts [dict get $found device_files]]
    dict set found libraries [rows [dict get $found libraries]]
    list 1 [d $found {device_files libraries}]
}
proc answer_project {} {
    parse $::project
    want 0 0
    set found [apply_project]
    set lists [dict keys $found *_libraries]
    foreach key $lists {dict set found $key [texts [dict get $found $key]]}
    list 1 [d $found $lists]
}
proc answer_find {} {
    parse [dict merge $::project $::view {--eda {eda 0} --cached {cached 0}}]
    want 1
    if {[has cached] && ([has eda] || [has all])} {error usage}
    apply_project
    look_up_all [list find {*}[if {[has eda]} {list -eda}] {*}[if {[has cached]} {list -cached}]]
}
proc answer_include {} {
    parse [dict merge $::project $::view {--from {from 1} --alias {alias 1}}]
    want 1
    apply_project
    set command include
    foreach name {from alias} {
        if {[has $name]} {lappend command -$name [dict get $::options $name]}
    }
    look_up_all $command
}
proc answer_sources {} {
    parse [dict merge $::project $::view {--shipped {shipped 0}}]
    want 1 1
    apply_project
    set command [list sources {*}[if {[has shipped]} {list -shipped}]]
    set answer [dict create unit [s {*}$::rest] file_type_order [texts [gen file-types]]]
    if {[has all]} {
        set asked [gen {*}$command -all {*}$::rest]
        dict set answer candidates [rows $asked {standing group path}]
        return [list [expr {[llength $asked] != 0}] [d $answer [dict keys $answer]]]
    }
    if {[has trace]} {dict set answer asked [rows [gen {*}$command -trace {*}$::rest] {group there path}]}
    set files [gen {*}$command {*}$::rest]
    dict set answer files [rows $files]
    list [expr {[llength $files] != 0}] [d $answer [dict keys $answer]]
}
proc answer_names {} {
    parse {--project {project 1} --db {db 1} --database-file {file 1}}
    want 0 0
    set found [gen project -project [expr {[has project] ? [dict get $::options project] : [pwd]}]]
    gen project -db [expr {[has db] ? [dict get $::options db] : "[dict get $found project]db/"}]
    set file [gen database-file [expr {[has file] ? [dict get $::options file] : "top"}]]
    set all [list {*}[gen names] [dict create family database function gen_generate_pdb_filename path $file]]
    list 1 [d [dict create names [rows $all]] names]
}
proc answer_condition {} {
    parse {--tokens {tokens 0} --tree {tree 0}}
    want 1 1
    lassign $::rest condition
    set answer [gen condition -diagnostics $condition]
    set diagnostics [dict get $answer diagnostics]
    dict set answer diagnostics [texts $diagnostics]
    dict set answer condition $condition
    if {[has tokens]} {dict set answer tokens [rows [gen condition -tokens $condition]]}
    if {[has tree]} {
        dict set answer tree [texts [lmap node [gen condition -tree $condition] {
            set depth [dict get $node depth]
            string cat [string repeat "  " [expr {min($depth, 40)}]] [expr {$depth > 40 ? "\[$depth\] " : ""}] \
                [dict get $node text]
        }]]
    }
    list [expr {![llength $diagnostics]}] [d $answer {diagnostics tokens tree}]
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
    set lines [split [regsub {\n$} [read stdin] ""] \n]
    list 1 [d [dict create lines [texts [gen lexsort {*}[dict keys $::options] -- $lines]]] lines]
}
proc answer_text_number {} {
    parse {-r {radix 1} --radix {radix 1}}
    want 1 1
    set radix [expr {[has radix] ? [dict get $::options radix] : 10}]
    set read [gen number -radix $radix -- {*}$::rest]
    if {$read eq ""} {
        gen number -radix $radix 1
        return [list 0 [d [dict create value "" digits "" radix $radix]]]
    }
    dict set read radix $radix
    dict set read unread [string range [lindex $::rest 0] [dict get $read used] end]
    list 1 [d [dict remove $read used]]
}
foreach {what command key long short} {fold fold texts -upper -u trim trim texts -white-space -w sanitise sanitise names {} {}} {
    proc answer_text_$what {} [string map [list COMMAND $command KEY $key LONG $long SHORT $short] {
        parse {-LONG {LONG 0} SHORT {LONG 0}}
        want 1
        list 1 [d [dict create KEY [texts [lmap text $::rest {gen COMMAND {*}[dict keys $::options] -- $text}]]] KEY]
    }]
}
proc answer_text_wildcard {} {
    parse {-p {-part 0} --part {-part 0}}
    want 1
    set names [lassign $::rest pattern]
    set answer [dict create expression [s [gen wildcard {*}[dict keys $::options] -- $pattern]]]
    set matches {}
    if {[llength $names]} {
        set matches [gen wildcard {*}[dict keys $::options] -- $pattern {*}$names]
        dict set answer matches [texts $matches]
    }
    list [expr {![llength $names] || [llength $matches]}] [d $answer [dict keys $answer]]
}
proc answer_text_checksum {} {
    parse {-s {sanitise 0} --sanitise {sanitise 0} --file {file 1}}
    if {[has file]} {set ::rest [list [read [open [dict get $::options file]]]]}
    if {![llength $::rest]} {set ::rest [list [read stdin]]}
    set sum [expr {[has sanitise] ? [gen sanitise -checksum {*}$::rest] : [gen checksum {*}$::rest]}]
    list 1 [d [dict create hexadecimal [format 0x%08x $sum] decimal [expr {$sum >> 31 ? $sum - (1 << 32) : $sum}]]]
}
proc answer_text_hash-size {} {
    parse {}
    want 1
    set all 1
    set sizes [lmap number $::rest {
        try {
            gen hash-size $number
        } trap {KORVANE INTERNAL} {} {
            set all 0
            string cat ""
        }
    }]
    list $all [d [dict create sizes [texts $sizes]] sizes]
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
proc answer_flags {} {
    parse {}
    want 0 0
    set flags [gen flags]
    foreach line [split [read stdin] \n] {
        switch -glob -- [lindex $line 0] {
            create {$flags add [lindex $line 1]}
            destroy {$flags remove [$flags find [lindex $line 1]]}
            find {$flags find [lindex $line 1]}
            "" - "#*" - stats - slots {}
            default {error usage}
        }
    }
    list 1 [d [dict create statistics [d [$flags statistics]]] statistics]
}

try {
    gen start -executable $executable
    set arguments [lassign $arguments family]
    lassign [answer_$family] yes record
    puts $record
    exit [expr {!$yes}]
} on error message {
    puts stderr $message
    exit 2
}
