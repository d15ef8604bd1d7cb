// Included as "inc/display.vh"; what it includes itself lies beside it, in another directory, and in
// the shipped libraries.
`ifndef DISPLAY_VH
`define DISPLAY_VH
`include "segments.vh"
`include "../src/display/polarity.vh"
`include "parablocks.vh"
`endif
