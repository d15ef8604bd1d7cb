# The subcommands of "gen", on the functions of the C interface in ::korvane_gen::c. Each is a procedure of
# its name in ::korvane_gen::sub; korvane_gen.cpp has those that have to be quick.

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
        env            "gen env tool script"
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

# Runs a subcommand.
proc ::korvane_gen::run {args} {
    variable usage
    if {![llength $args]} {
        return -code error -errorcode {TCL WRONGARGS} \
            "wrong # args: should be \"gen subcommand ?argument ...?\""
    }
    set rest [lassign $args name]
    if {![dict exists $usage $name]} {
        return -code error -errorcode [list KORVANE SUBCOMMAND $name] \
            "unknown subcommand \"$name\": must be [join [dict keys $usage] {, }]"
    }
    tailcall ::korvane_gen::sub::$name {*}$rest
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
            dict set given $word [expr {$words ? [lindex $arguments [incr i]] : 1}]
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

# Those of the rows that are there.
proc ::korvane_gen::there {rows} {
    lmap row $rows {expr {[dict get $row there] ? $row : [continue]}}
}

# One column of a table.
proc ::korvane_gen::column {rows name} {
    lmap row $rows {dict get $row $name}
}

namespace eval ::korvane_gen::sub {
    namespace path ::korvane_gen
}

# Start.

proc ::korvane_gen::sub::start {args} {
    options start {-root 1 -executable 1} $args 0 0
    if {[dict size $given] > 1} {
        wrong start
    }
    if {[dict exists $given -executable]} {
        set found [c::start_as [dict get $given -executable]]
    } elseif {[dict exists $given -root]} {
        set found [c::start [dict get $given -root]]
    } elseif {[info exists ::env(KORVANE_ROOTDIR)]} {
        set found [c::start $::env(KORVANE_ROOTDIR)]
    } else {
        return -code error -errorcode {KORVANE ARGUMENT root} \
            "gen start wants -root or -executable, or KORVANE_ROOTDIR in the environment"
    }
    if {!$found} {
        return -code error -errorcode {KORVANE NOT_FOUND} "there is no such installation"
    }
}

proc ::korvane_gen::sub::finish {args} {
    options finish {} $args 0 0
    c::finish
    return
}

proc ::korvane_gen::sub::version {args} {
    options version {} $args 0 0
    package require korvane_gen
}

proc ::korvane_gen::sub::where {args} {
    options where {} $args 0 0
    lindex [c::where] 0
}

proc ::korvane_gen::sub::installation {args} {
    options installation {} $args 0 0
    set answer [lindex [c::installation] 0]
    dict set answer device_files [column [c::device_files] name]
    dict set answer libraries [c::libraries]
    return $answer
}

proc ::korvane_gen::sub::library {args} {
    c::library [lindex [options library {} $args 1 1] 0]
}

# Project.

proc ::korvane_gen::sub::project {args} {
    options project {-project 1 -db 1 -output 1 -project-libs 1 -user-libs 1} $args 0 0
    foreach {option set} {
        -project set_project -db set_database -output set_output
        -project-libs set_project_libraries -user-libs set_user_libraries
    } {
        if {[dict exists $given $option]} {
            c::$set [dict get $given $option]
        }
    }
    set directories [lindex [c::project] 0]
    set answer [dict filter $directories key project database output parablocks]
    foreach {key group} {project_libraries 2 user_libraries 3 shipped_libraries 5 eda_libraries 6} {
        dict set answer $key [column [c::directories $group] directory]
    }
    return $answer
}

proc ::korvane_gen::sub::relative {args} {
    c::relative_to_project [lindex [options relative {} $args 1 1] 0]
}

proc ::korvane_gen::sub::file-types {args} {
    options file-types {} $args 0 0
    column [c::file_types] extension
}

proc ::korvane_gen::sub::reset {args} {
    options reset {} $args 0 0
    c::clear_paths
    return
}

# Lookup.

proc ::korvane_gen::sub::find {args} {
    lassign [options find {-eda 0 -cached 0 -all 0 -trace 0} $args 1 1] name
    set eda [dict exists $given -eda]
    dict unset given -eda
    if {[dict size $given] > 1 || ($eda && [dict exists $given -cached])} {
        wrong find
    }
    switch -- [lindex $given 0] {
        -cached {return [c::find_cached $name]}
        -all {return [there [c::trace_find $name $eda 1]]}
        -trace {return [c::trace_find $name $eda 0]}
        default {return [expr {$eda ? [c::find_eda $name] : [c::find $name]}]}
    }
}

proc ::korvane_gen::sub::include {args} {
    lassign [options include {-from 1 -alias 1 -beside 1 -all 0 -trace 0} $args 1 1] name
    set all [dict exists $given -all]
    if {$all && [dict exists $given -trace] || ([dict exists $given -alias] && ![dict exists $given -from])} {
        wrong include
    }
    set more {}
    foreach option {-from -alias} {
        if {[dict exists $given $option]} {
            lappend more [dict get $given $option]
        }
    }
    if {$all} {
        return [there [c::trace_include $name 1 {*}$more]]
    }
    if {[dict exists $given -trace]} {
        return [c::trace_include $name 0 {*}$more]
    }
    lassign [c::include $name {*}$more] path beside
    if {[dict exists $given -beside]} {
        upvar 1 [dict get $given -beside] variable
        set variable $beside
    }
    return $path
}

proc ::korvane_gen::sub::sources {args} {
    lassign [options sources {-shipped 0 -all 0 -trace 0} $args 1 1] unit
    set shipped [dict exists $given -shipped]
    if {[dict exists $given -all]} {
        return [there [c::trace_sources $unit $shipped 1]]
    }
    if {[dict exists $given -trace]} {
        return [c::trace_sources $unit $shipped 0]
    }
    c::sources $unit $shipped
}

proc ::korvane_gen::sub::cache {args} {
    switch -- $args {
        clear {c::clear_cache; return}
        size {return [c::cache_size]}
        default {wrong cache}
    }
}

# Names.

proc ::korvane_gen::sub::names {args} {
    options names {} $args 0 0
    c::tool_files
}

proc ::korvane_gen::sub::database-file {args} {
    lassign [options database-file {} $args 1 2] name extension
    c::database_file $name [expr {[llength $args] == 2 ? $extension : "pdb"}]
}

proc ::korvane_gen::sub::temp {args} {
    options temp {-directory 1 -prefix 1 -number 1} $args 0 0
    set given [dict merge {-prefix gen -number 0} $given]
    set more [list [dict get $given -prefix] [dict get $given -number]]
    if {[dict exists $given -directory]} {
        return [c::temporary_file [dict get $given -directory] {*}$more]
    }
    c::usual_temporary_file {*}$more
}

proc ::korvane_gen::sub::profile {args} {
    options profile {} $args 0 0
    c::profile_directory
}

# Evaluates the script with the 64-bit tools in front, if the tool is among them.
proc ::korvane_gen::sub::env {args} {
    lassign [options env {} $args 2 2] tool script
    set old [c::enter_64bit $tool]
    if {$old eq ""} {
        tailcall try $script
    }
    catch {uplevel 1 $script} result options
    c::leave_64bit {*}$old
    return -options $options $result
}

# Text.

proc ::korvane_gen::sub::condition {args} {
    lassign [options condition {-tokens 0 -tree 0 -diagnostics 0} $args 1 1] condition
    switch -- [dict keys $given] {
        -tokens {return [c::condition_tokens $condition]}
        -tree {return [c::condition_tree $condition]}
        "" - -diagnostics {}
        default {wrong condition}
    }
    lassign [c::condition $condition] prefix text
    set diagnostics [split [string trimright $text \n] \n]
    if {[dict exists $given -diagnostics]} {
        return [dict create prefix $prefix diagnostics $diagnostics]
    }
    if {[llength $diagnostics]} {
        return -code error -errorcode [list KORVANE CONDITION $diagnostics $prefix] \
            [join $diagnostics "; "]
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
    set radix [expr {[dict exists $given -radix] ? [dict get $given -radix] : 10}]
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
    set names [lassign [options wildcard {-part 0} $args 1 100000] pattern]
    set part [dict exists $given -part]
    if {![llength $names]} {
        return [c::wildcard $pattern $part]
    }
    lmap name $names {expr {[c::wildcard_matches $pattern $part $name] ? $name : [continue]}}
}

proc ::korvane_gen::sub::sanitise {args} {
    lassign [options sanitise {-checksum 0} $args 1 1] name
    expr {[dict exists $given -checksum] ? [c::checksum_sanitised $name] : [c::sanitise $name]}
}

proc ::korvane_gen::sub::hash-size {args} {
    c::hash_size [lindex [options hash-size {} $args 1 1] 0]
}

# Time and machine.

proc ::korvane_gen::sub::units {args} {
    switch -- $args {
        time {c::time_units}
        frequency {c::frequency_units}
        default {wrong units}
    }
}

proc ::korvane_gen::sub::time {args} {
    lassign $args what argument
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
    set words [list [expr {[dict exists $given -tag] ? [dict get $given -tag] : "tcl"}]]
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

# Objects.

proc ::korvane_gen::sub::stopwatch {args} {
    options stopwatch {} $args 0 0
    ::korvane_gen::Stopwatch new
}

proc ::korvane_gen::sub::undo {args} {
    ::korvane_gen::Undo new [lindex [options undo {} $args 1 1] 0]
}

proc ::korvane_gen::sub::flags {args} {
    options flags {} $args 0 0
    ::korvane_gen::Flags new
}

proc ::korvane_gen::sub::histogram {args} {
    lassign [options histogram {} $args 2 3] low high bins
    ::korvane_gen::Histogram new $low $high [expr {[llength $args] == 3 ? $bins : 10}]
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

oo::class create ::korvane_gen::Undo {
    variable handle
    constructor {directory} {set handle [::korvane_gen::c::undo_create $directory]}
    destructor {if {[info exists handle]} {::korvane_gen::c::undo_free $handle}}
    # Evaluates the script, which adds the section's commands, and records the section.
    method section {title description script} {
        ::korvane_gen::c::undo_begin $handle $title
        ::korvane_gen::c::undo_describe $handle $description
        if {[catch {uplevel 1 $script} result options]} {
            # Nothing of it is recorded, and nothing more belongs to it.
            ::korvane_gen::c::undo_begin $handle ""
            ::korvane_gen::c::undo_end $handle
            dict incr options -level
            return -options $options $result
        }
        if {![::korvane_gen::c::undo_end $handle]} {
            return -code error -errorcode {KORVANE ARGUMENT section} \
                "a section needs a title and a command"
        }
    }
    method undo {command {comment ""}} {::korvane_gen::c::undo_add $handle 0 $command $comment; return}
    method redo {command {comment ""}} {::korvane_gen::c::undo_add $handle 1 $command $comment; return}
    method commit {} {::korvane_gen::c::undo_commit $handle}
}

oo::class create ::korvane_gen::Flags {
    variable handle
    constructor {} {set handle [::korvane_gen::c::flags_create]}
    destructor {if {[info exists handle]} {::korvane_gen::c::flags_free $handle}}
    method add {name} {::korvane_gen::c::flags_add $handle $name}
    method find {name} {::korvane_gen::c::flags_find $handle $name}
    method remove {mask} {::korvane_gen::c::flags_remove $handle $mask; return}
    method describe {mask} {::korvane_gen::c::flags_describe $handle $mask}
    method statistics {} {lindex [::korvane_gen::c::flags_statistics $handle] 0}
    method slots {} {::korvane_gen::c::flags_slots $handle}
    method swept {} {::korvane_gen::column [::korvane_gen::c::flags_swept $handle] mask}
}

oo::class create ::korvane_gen::Histogram {
    variable handle
    constructor {low high bins} {
        set handle [::korvane_gen::c::histogram_create $low $high $bins]
    }
    destructor {if {[info exists handle]} {::korvane_gen::c::histogram_free $handle}}
    method add {args} {
        foreach item $args {
            ::korvane_gen::c::histogram_add $handle $item
        }
    }
    method size {} {::korvane_gen::c::histogram_size $handle}
    method bin {item} {::korvane_gen::c::histogram_bin $handle $item}
    method bins {} {::korvane_gen::c::histogram_bins $handle}
    method outside {} {lindex [::korvane_gen::c::histogram_outside $handle] 0}
}
