// Included by every parablock: the clock edge and the reset that all of them share.
`ifndef PARABLOCKS_VH
`define PARABLOCKS_VH
`define PARABLOCK_EDGE posedge clk
`endif
