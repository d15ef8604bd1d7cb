`ifndef SETTINGS_VH
`define SETTINGS_VH
`define COUNT_BITS 4
`endif
