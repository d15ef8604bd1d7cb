# Answers a command line of gen_query through the Tcl package, as JSON whose scalars are all strings. The files
# beside it have the subcommands, by topic.
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
# The lines of a text, the last one with or without its end.
proc lines_of {text} {
    if {$text eq ""} {return}
    split [regsub {\n$} $text ""] \n
}
proc input {{file -}} {
    if {$file eq "-"} {return [read stdin]}
    set channel [open $file]
    fconfigure $channel -encoding utf-8 -translation lf
    try {read $channel} finally {close $channel}
}
# Evaluates a script; the conditions of the internal errors that it raises are added to the variable, and its result is
# then what the library answered all the same.
proc asked {variable script} {
    upvar 1 $variable conditions
    try {
        uplevel 1 $script
    } trap {KORVANE INTERNAL} {message options} {
        lassign [dict get $options -errorcode] - - reports answer
        lappend conditions {*}[lmap report $reports {dict get $report condition}]
        return $answer
    }
}
# Answers the names of the command line, and in place of "-" those on standard input, a line each. The command gives
# whether it is true, and the record.
proc answer_each {names command} {
    set all 1
    foreach name $names {
        foreach one [expr {$name eq "-" ? [lines_of [input]] : [list $name]}] {
            lassign [{*}$command $one] yes record
            set all [expr {$all && $yes}]
            puts $record
        }
    }
    list $all ""
}

foreach topic {lookup text editing} {
    source [file join [file dirname [info script]] parity_$topic.tcl]
}

try {
    gen start -executable $executable
    set arguments [lassign $arguments family]
    lassign [answer_$family] yes record
    if {$record ne ""} {puts $record}
    exit [expr {!$yes}]
} on error message {
    puts [d [dict create error $message]]
    exit 2
}
