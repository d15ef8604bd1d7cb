// A driver that can let go of the line.
module tri_buffer (input i, input enable, output o);
  assign o = enable ? i : 1'bz;
endmodule
