// The segments light up on a low level.
`define SEGMENT_ON 1'b0
