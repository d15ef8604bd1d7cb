puts "for the makers of the suite alone"
