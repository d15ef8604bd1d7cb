# The subcommands of "gen", on the functions of the C interface in ::korvane_gen::c. Each is a procedure of
# its name in ::korvane_gen::sub, in the file of its topic; korvane_gen.cpp has those that have to be quick.

namespace eval ::korvane_gen {
    # How each subcommand is called.
    variable usage {
        cache          "gen cache clear|size"
        cached         "gen cached name"
        checksum       "gen checksum text"
        compare        "gen compare ?-nocase? first second"
        condition      "gen condition ?-tokens|-tree|-diagnostics? condition"
        database-file  "gen database-file name ?extension?"
        do-not-edit    "gen do-not-edit ?prefix?"
        env            "gen env -wanted|{tool script}"
        file-types     "gen file-types"
        find           "gen find ?-eda? ?-cached|-all|-trace? name"
        finish         "gen finish"
        flags          "gen flags"
        fold           "gen fold ?-upper? text"
        hash-size      "gen hash-size number"
        histogram      "gen histogram low high ?bins?"
        include        "gen include ?-from file? ?-alias file? ?-beside variable? ?-all|-trace? name"
        installation   "gen installation"
        legal          "gen legal ?-prefix prefix? banner|trademark|warning|bitstream"
        lexcompare     "gen lexcompare ?-nocase? first second"
        lexsort        "gen lexsort ?-nocase? ?-decreasing? ?-unique? list"
        library        "gen library number"
        machine        "gen machine ?host?"
        message        "gen message ?-inserts? format ?argument ...?"
        modules        "gen modules ?-tag tag? ?-phase phase? ?-modules? ?-details? ?-memory?"
        names          "gen names"
        number         "gen number ?-radix radix? text"
        profile        "gen profile"
        project        "gen project ?-project dir? ?-db dir? ?-output dir? ?-project-libs dirs? ?-user-libs dirs?"
        real           "gen real text"
        relative       "gen relative path"
        reset          "gen reset"
        sanitise       "gen sanitise ?-checksum? name"
        sources        "gen sources ?-shipped? ?-all|-trace? unit"
        start          "gen start ?-root dir|-executable file?"
        stopwatch      "gen stopwatch"
        temp           "gen temp ?-directory dir? ?-prefix prefix? ?-number number?"
        time           "gen time now|{date seconds}|{format format}|{elapsed seconds}"
        trim           "gen trim ?-white-space? text"
        undo           "gen undo directory"
        units          "gen units time|frequency"
        version        "gen version"
        where          "gen where"
        wildcard       "gen wildcard ?-part? pattern ?name ...?"
    }
}
namespace eval ::korvane_gen::sub {}

# Runs a subcommand. As in an ensemble, its name may be shortened as long as it is the only one.
proc ::korvane_gen::run {args} {
    variable usage
    if {![llength $args]} {
        return -code error -errorcode {TCL WRONGARGS} \
            "wrong # args: should be \"gen subcommand ?argument ...?\""
    }
    set rest [lassign $args name]
    if {[dict exists $usage $name]} {
        tailcall ::korvane_gen::sub::$name {*}$rest
    }
    set names [dict keys $usage]
    set meant [::tcl::prefix all $names $name]
    if {[llength $meant] != 1} {
        return -code error -errorcode [list KORVANE SUBCOMMAND $name] "unknown or ambiguous subcommand\
            \"$name\": must be [join [lrange $names 0 end-1] {, }], or [lindex $names end]"
    }
    tailcall gen {*}$meant {*}$rest
}

# Raises the error of a wrong call of the subcommand that calls.
proc ::korvane_gen::wrong {name} {
    variable usage
    return -level 2 -code error -errorcode {TCL WRONGARGS} \
        "wrong # args: should be \"[dict get $usage $name]\""
}

# Parts a subcommand's arguments from its options, which stand before or behind all of them. known has the
# options with the number of words that follow each, 0 or 1. The options that are there, as a dictionary,
# land in the caller's "given", and as many words as fit from least to most remain.
proc ::korvane_gen::options {name known arguments least most} {
    upvar 1 given given
    variable usage
    set given {}
    set rest {}
    set count [llength $arguments]
    for {set i 0} {$i < $count} {incr i} {
        set word [lindex $arguments $i]
        if {$word eq "--" && ![llength $rest]} {
            set rest [lrange $arguments $i+1 end]
            break
        } elseif {[dict exists $known $word]} {
            set words [dict get $known $word]
            if {$i + $words >= $count} {
                return -level 2 -code error -errorcode {TCL WRONGARGS} \
                    "option \"$word\" wants a value: should be \"[dict get $usage $name]\""
            }
            dict set given $word [if {$words} {lindex $arguments [incr i]} {string cat 1}]
        } elseif {[string match -* $word] && ([llength $rest] || $count - $i > $most)} {
            return -level 2 -code error -errorcode [list KORVANE OPTION $word] \
                "unknown option \"$word\": should be \"[dict get $usage $name]\""
        } elseif {[llength $rest] || $most == 0} {
            return -level 2 -code error -errorcode {TCL WRONGARGS} \
                "wrong # args: should be \"[dict get $usage $name]\""
        } else {
            # The last of them may begin like an option.
            set last [expr {$i + $most - 1}]
            set rest [lrange $arguments $i $last]
            set i $last
        }
    }
    if {[llength $rest] < $least || [llength $rest] > $most} {
        return -level 2 -code error -errorcode {TCL WRONGARGS} \
            "wrong # args: should be \"[dict get $usage $name]\""
    }
    return $rest
}

# A text goes through "if" here, never through "expr", which would write 0x10 as 16.

# Those of the rows that are there.
proc ::korvane_gen::there {rows} {
    lmap row $rows {if {[dict get $row there]} {set row} continue}
}

# One column of a table.
proc ::korvane_gen::column {rows name} {
    lmap row $rows {dict get $row $name}
}

namespace eval ::korvane_gen::sub {
    namespace path ::korvane_gen
}

apply {{directory} {
    foreach topic {start lookup text machine editing} {
        source [file join $directory $topic.tcl]
    }
}} [file dirname [info script]]
