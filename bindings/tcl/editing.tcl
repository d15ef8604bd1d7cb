# Undo files, flags, histograms.

proc ::korvane_gen::sub::undo {args} {
    ::korvane_gen::Undo new [lindex [options undo {} $args 1 1] 0]
}

proc ::korvane_gen::sub::flags {args} {
    options flags {} $args 0 0
    ::korvane_gen::Flags new
}

proc ::korvane_gen::sub::histogram {args} {
    # The usual number of bins stands behind the words given, and is cut off where it is not needed.
    ::korvane_gen::Histogram new {*}[lrange [list {*}[options histogram {} $args 2 3] 10] 0 2]
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
            # One level further out: break, continue and return in the script are the caller's.
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
    constructor {low high bins} {set handle [::korvane_gen::c::histogram_create $low $high $bins]}
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
