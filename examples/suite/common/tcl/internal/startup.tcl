set suite_started [clock seconds]
