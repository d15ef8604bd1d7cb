# Start, installation, names of files, environment.

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

proc ::korvane_gen::sub::names {args} {
    options names {} $args 0 0
    c::tool_files
}

proc ::korvane_gen::sub::database-file {args} {
    # The usual extension stands behind the words given, and is cut off where it is not needed.
    c::database_file {*}[lrange [list {*}[options database-file {} $args 1 2] pdb] 0 1]
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
    if {$args eq "-wanted"} {
        return [c::is_64bit_wanted]
    }
    lassign [options env {} $args 2 2] tool script
    set old [c::enter_64bit $tool]
    if {$old eq ""} {
        tailcall try $script
    }
    catch {uplevel 1 $script} result options
    c::leave_64bit {*}$old
    # One level further out: break, continue and return in the script are the caller's.
    dict incr options -level
    return -options $options $result
}
