`define SEGMENTS 7
