module mux #(parameter int WIDTH = 8, parameter int INPUTS = 4) (
    input logic [WIDTH-1:0] data[INPUTS],
    input logic [$clog2(INPUTS)-1:0] choose,
    output logic [WIDTH-1:0] result);
  assign result = data[choose];
endmodule
